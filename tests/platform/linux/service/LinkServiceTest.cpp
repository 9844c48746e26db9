#include "platform/linux/service/LinkService.h"

#include "BusClient.h"
#include "platform/Version.h"
#include "support/PrivateBus.h"

#include <gtest/gtest.h>
#include <unistd.h>

namespace fernhop::freedesktop {
namespace {

using Texts = std::vector<std::string>;

class LinkServiceTest : public testing::Test {
  protected:
    LinkServiceTest() {
        EXPECT_TRUE(service.exportObject());
        EXPECT_EQ(requestName(connection.get(), serviceName), NameRequest::owned);
    }

    void listen() {
        dispatcher.setEventHandler(
            [this](const LinkEventDescriptor &event, auto &) {
                links.push_back(event.paramDescriptorForKeyword(directObjectKeyword)->stringValue.value());
                current.isTaken = takes;
                if (holds)
                    held.push_back(current.delivery);
            },
            getUrlEventCode, getUrlEventCode);
    }
    PendingCall call(const char *interface, const char *method, const char *body) {
        return {client.get(), serviceName, serviceObjectPath, interface, method, g_variant_new_parsed(body)};
    }

    support::TemporaryHome home;
    support::PrivateBus bus{home};
    BusConnection connection = connectTo(bus.address());
    BusConnection client = connectTo(bus.address());
    CurrentDelivery current;
    LinkSender sender;
    LinkDispatcher dispatcher{current, [this](const LinkSender &told, const auto &handle) {
                                  sender = told;
                                  handle();
                              }};
    Texts links;
    bool takes = false;
    bool holds = false;
    std::vector<std::shared_ptr<LinkDelivery>> held;
    int activations = 0;
    int refusals = 0;
    Texts performed;
    std::string token;
    LinkService service{connection.get(),
                        dispatcher,
                        {[this](const auto &arguments, const std::string &input) {
                             performed = arguments;
                             performed.push_back(input);
                             return CommandResult{7, "out\xff", "err"};
                         },
                         [this](const std::string &came) { token = came; }, [this] { ++activations; },
                         [this] { ++refusals; }}};
};

TEST_F(LinkServiceTest, TakesLinksOfAnyBytes) {
    listen();
    const auto opened = call(serviceInterface, "OpenLinks",
                             "([@ay [0x68, 0xff], b'https://a'], {'activation-token': <b'token'>})");
    ASSERT_TRUE(opened.wait());
    EXPECT_EQ(opened.result(), "([(0, 'it is not a URL'), (1, 'no browser can open it')],)");
    EXPECT_EQ(links, (Texts{"h\xff", "https://a"}));
    EXPECT_EQ(sender.tokens.activationToken, "token");
}

TEST_F(LinkServiceTest, TakesLinksThroughTheApplicationInterface) {
    listen();
    const auto opened = call("org.freedesktop.Application", "Open",
                             "(['https://a', 'https://b'], {'desktop-startup-id': <'id'>})");
    ASSERT_TRUE(opened.wait());
    EXPECT_EQ(opened.result(), "()");
    EXPECT_EQ(links, (Texts{"https://a", "https://b"}));
    EXPECT_EQ(sender.tokens.startupID, "id");
}

TEST_F(LinkServiceTest, ReportsLinksThatWereNotOpened) {
    holds = true;
    takes = true;
    listen();
    const auto opened = call(serviceInterface, "OpenLinks", "([b'https://a', b'https://b'], @a{sv} {})");
    ASSERT_TRUE(support::runUntil([&] { return held.size() == 2; }));
    held[1]->addUnopened({1, "broken\xff"});
    held.clear();
    ASSERT_TRUE(opened.wait());
    EXPECT_EQ(opened.result(), "([(1, 'broken\uFFFD')],)");
}

TEST_F(LinkServiceTest, LimitsTheLengthOfItsAnswer) {
    holds = true;
    takes = true;
    listen();
    const auto opened = call(serviceInterface, "OpenLinks", "([b'https://a', b'https://b'], @a{sv} {})");
    ASSERT_TRUE(support::runUntil([&] { return held.size() == 2; }));
    held[0]->addUnopened({0, "short"});
    held[1]->addUnopened({1, std::string(std::size_t{200} << 20U, 'x')});
    held.clear();
    ASSERT_TRUE(opened.wait());
    EXPECT_EQ(opened.result(), "([(0, 'short'), (1, '')],)");
}

TEST_F(LinkServiceTest, CallerOfApplicationInterfaceIsTheSender) {
    listen();
    ASSERT_TRUE(call("org.freedesktop.Application", "Open", "(['https://a'], @a{sv} {})").wait());
    EXPECT_EQ(sender.parentPid, getpid());
    ASSERT_TRUE(call("org.freedesktop.Application", "Open", "(['https://a'], {'parent-pid': <7>})").wait());
    EXPECT_EQ(sender.parentPid, 7) << "who delivers for another says so";
    ASSERT_TRUE(call(serviceInterface, "OpenLinks", "([b'https://a'], @a{sv} {})").wait());
    EXPECT_EQ(sender.parentPid, std::nullopt) << "the stub is nobody's source";
}

TEST_F(LinkServiceTest, AnswersOnlyWhenTheLinksAreHandled) {
    holds = true;
    listen();
    const auto opened = call(serviceInterface, "OpenLinks", "([b'https://a'], @a{sv} {})");
    ASSERT_TRUE(support::runUntil([&] { return !held.empty(); }));
    const auto later = call(serviceInterface, "Perform", "(@as [], @ay [], @a{sv} {})");
    ASSERT_TRUE(later.wait());
    EXPECT_FALSE(opened.isDone());
    held.clear();
    EXPECT_TRUE(opened.wait());
}

TEST_F(LinkServiceTest, PerformsCommands) {
    const auto done = call(serviceInterface, "Perform", "(['match', 'a*'], b'https://a', @a{sv} {})");
    ASSERT_TRUE(done.wait());
    EXPECT_EQ(performed, (Texts{"match", "a*", std::string("https://a\0", 10)})) << "input is taken whole";
    EXPECT_EQ(done.result(), "(7, 'out\uFFFD', 'err')");
}

TEST_F(LinkServiceTest, CommandsMayBringAnActivationToken) {
    for (const char *none : {"@a{sv} {}", "{'activation-token': <''>}", "{'activation-token': <7>}"}) {
        const auto body = std::string("(['x'], @ay [], ") + none + ")";
        token = "of the former command";
        ASSERT_TRUE(call(serviceInterface, "Perform", body.c_str()).wait());
        EXPECT_EQ(token, "") << none;
    }
    ASSERT_TRUE(
        call(serviceInterface, "Perform", "(['x'], @ay [], {'activation-token': <'token-1'>})").wait());
    EXPECT_EQ(token, "token-1");
}

TEST_F(LinkServiceTest, RefusesProgramsOfAnotherVersionBeforeItDoesAnything) {
    listen();
    for (const char *body :
         {"([b'https://a'], {'version': <'0.0.1'>})", "([b'https://a'], {'version': <''>})"}) {
        const auto refused = call(serviceInterface, "OpenLinks", body);
        ASSERT_TRUE(refused.wait());
        EXPECT_EQ(refused.errorName(), otherVersionError) << body;
    }
    const auto command = call(serviceInterface, "Perform", "(['x'], @ay [], {'version': <'0.0.1'>})");
    ASSERT_TRUE(command.wait());
    EXPECT_EQ(command.errorName(), otherVersionError);
    EXPECT_EQ(refusals, 3);
    EXPECT_TRUE(links.empty());
    EXPECT_TRUE(performed.empty());
    const auto body = std::string("([b'https://a'], {'version': <'") + programVersion() + "'>})";
    const auto taken = call(serviceInterface, "OpenLinks", body.c_str());
    ASSERT_TRUE(taken.wait());
    EXPECT_EQ(taken.errorName(), "");
    EXPECT_EQ(links, Texts{"https://a"});
}

TEST_F(LinkServiceTest, ServesOnlyOtherApplicationsDuringAnUpgrade) {
    holds = true;
    listen();
    int idle = 0;
    service.setUpgrading([&] { ++idle; });
    EXPECT_TRUE(service.isIdle());
    const auto body = std::string("([b'https://a'], {'version': <'") + programVersion() + "'>})";
    const auto refused = call(serviceInterface, "OpenLinks", body.c_str());
    ASSERT_TRUE(refused.wait());
    EXPECT_EQ(refused.errorName(), otherVersionError);
    const auto opened = call("org.freedesktop.Application", "Open", "(['https://b'], @a{sv} {})");
    ASSERT_TRUE(support::runUntil([&] { return !held.empty(); }));
    EXPECT_FALSE(service.isIdle());
    EXPECT_EQ(idle, 0);
    held.clear();
    ASSERT_TRUE(opened.wait());
    EXPECT_EQ(idle, 1);
    EXPECT_EQ(links, Texts{"https://b"});
}

TEST_F(LinkServiceTest, ActivateReachesTheController) {
    const auto done = call("org.freedesktop.Application", "Activate", "(@a{sv} {},)");
    ASSERT_TRUE(done.wait());
    EXPECT_EQ(done.errorName(), "");
    EXPECT_EQ(activations, 1);
}

TEST_F(LinkServiceTest, RefusesActions) {
    const auto done = call("org.freedesktop.Application", "ActivateAction", "('x', @av [], @a{sv} {})");
    ASSERT_TRUE(done.wait());
    EXPECT_EQ(done.errorName(), "org.freedesktop.DBus.Error.InvalidArgs");
}

TEST_F(LinkServiceTest, RefusesCallsOfAnotherType) {
    listen();
    for (const char *body : {"()", "('https://a',)", "(['https://a'], @a{sv} {})", "(@aay [], @a{ss} {})"}) {
        const auto done = call(serviceInterface, "OpenLinks", body);
        ASSERT_TRUE(done.wait());
        EXPECT_EQ(done.errorName(), "org.freedesktop.DBus.Error.InvalidArgs") << body;
    }
    const auto unknown = call(serviceInterface, "Shred", "()");
    ASSERT_TRUE(unknown.wait());
    EXPECT_EQ(unknown.errorName(), "org.freedesktop.DBus.Error.UnknownMethod");
    EXPECT_TRUE(links.empty());
}

TEST_F(LinkServiceTest, OneServicePerConnection) {
    {
        LinkService second(connection.get(), dispatcher, {});
        EXPECT_FALSE(second.exportObject());
    }
    const auto opened = call("org.freedesktop.Application", "Activate", "(@a{sv} {},)");
    ASSERT_TRUE(opened.wait());
    EXPECT_EQ(opened.errorName(), "");
    EXPECT_EQ(activations, 1) << "the second took the first away";
}

TEST_F(LinkServiceTest, OneOwnerOfTheName) {
    EXPECT_EQ(requestName(client.get(), serviceName), NameRequest::taken);
    EXPECT_EQ(requestName(client.get(), "no name"), NameRequest::failed);
    // Another process cannot take it over either.
    const PendingCall taking(client.get(), "org.freedesktop.DBus", "/org/freedesktop/DBus",
                             "org.freedesktop.DBus", "RequestName",
                             g_variant_new("(su)", serviceName, 2U | 4U));
    ASSERT_TRUE(taking.wait());
    EXPECT_EQ(taking.result(), "(3,)"); // DBUS_REQUEST_NAME_REPLY_EXISTS
}

} // namespace
} // namespace fernhop::freedesktop
