#include "desktop/links/LinkSession.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>

#include <array>
#include <filesystem>
#include <string>

namespace fernhop::desktoptest {
namespace {

namespace fs = std::filesystem;

const std::string undecodableRules = R"(<?xml version="1.0" encoding="UTF-8"?>
<plist version="1.0"><dict><key>urlRules</key><data>e30=</data></dict></plist>)";

enum class Damage { text, undecodableRules, folder, danglingLink, pipe, fileForFolder };

/// Settings that cannot be read, in a session with a running Fernhop.
class UnreadableSettings : public testing::TestWithParam<Damage> {
  protected:
    UnreadableSettings() {
        fs::remove_all(folder);
        doDamage();
        session.startBus();
        session.startFernhop();
    }
    ~UnreadableSettings() override { session.killResident(SIGKILL); }

    void doDamage() {
        if (GetParam() == Damage::fileForFolder)
            return session.home.write(folder, "in the way");
        fs::create_directories(folder);
        switch (GetParam()) {
        case Damage::text:
            return session.home.write(file, "<plist><dict>");
        case Damage::undecodableRules:
            return session.home.write(file, undecodableRules);
        case Damage::folder:
            fs::create_directory(file);
            return;
        case Damage::danglingLink:
            fs::create_symlink("missing.plist", file);
            return;
        case Damage::pipe:
            ASSERT_EQ(mkfifo(file.c_str(), 0600), 0);
            return;
        case Damage::fileForFolder:
            return;
        }
    }

    /// Runs a command of which only what it writes to standard error counts.
    int errorsOf(const std::string &command) {
        return session.run({"bash", "-c", session.program("fernhop") + " " + command + " 2>&1 >/dev/null"});
    }

    [[nodiscard]] bool namesFile() const { return session.output().find(file) != std::string::npos; }

    [[nodiscard]] std::ptrdiff_t linesInLogAboutFile() const {
        const std::string log = session.log();
        std::ptrdiff_t lines = 0;
        for (auto place = log.find(file); place != std::string::npos; place = log.find(file, place + 1))
            ++lines;
        return lines;
    }

    void expectToldByEveryCommand() {
        EXPECT_EQ(session.fernhop({"status"}), 0);
        EXPECT_NE(session.output().find("Problem: The settings file " + file), std::string::npos)
            << session.output();
        for (const std::string command : {"url-rules list", "app-rules list", "explain https://a.example/"}) {
            EXPECT_EQ(errorsOf(command), 0);
            EXPECT_TRUE(namesFile()) << command << ": " << session.output();
        }
        EXPECT_EQ(errorsOf("export"), 1);
        EXPECT_TRUE(namesFile()) << session.output();
        EXPECT_EQ(session.run({"bash", "-c", session.program("fernhop") + " export 2>/dev/null"}), 1);
        EXPECT_EQ(session.output(), "") << "no document that looks like all there was";
    }

    LinkSession session;
    const std::string folder = session.home.config() + "/fernhop";
    const std::string file = folder + "/org.fernhop.Fernhop.plist";
};

std::string nameOf(const testing::TestParamInfo<Damage> &tested) {
    constexpr std::array names{"Text", "UndecodableRules", "Folder", "DanglingLink", "Pipe", "FileForFolder"};
    return names[static_cast<std::size_t>(tested.param)];
}

INSTANTIATE_TEST_SUITE_P(, UnreadableSettings,
                         testing::Values(Damage::text, Damage::undecodableRules, Damage::folder,
                                         Damage::danglingLink, Damage::pipe, Damage::fileForFolder),
                         nameOf);

TEST_P(UnreadableSettings, AreToldByTheRunningFernhop) {
    expectToldByEveryCommand();
    EXPECT_EQ(linesInLogAboutFile(), 1) << session.log();
}

TEST_P(UnreadableSettings, AreToldWithoutARunningFernhop) {
    session.killResident(SIGKILL);
    expectToldByEveryCommand();
}

TEST_P(UnreadableSettings, AreReplacedByAChangeAndKeptOnce) {
    if (GetParam() == Damage::fileForFolder) {
        EXPECT_EQ(session.fernhop({"url-rules", "add", "a", "web"}), 1);
        EXPECT_EQ(fs::file_size(folder), std::string("in the way").size());
        return;
    }
    for (const std::string pattern : {"a", "b", "c"})
        EXPECT_EQ(session.fernhop({"url-rules", "add", pattern, "web"}), 0) << session.output();
    EXPECT_FALSE(namesFile()) << session.output();
    EXPECT_EQ(session.fernhop({"status"}), 0);
    EXPECT_FALSE(namesFile()) << session.output();
    EXPECT_EQ(fs::exists(file + ".unreadable-1"), GetParam() != Damage::danglingLink);
    EXPECT_FALSE(fs::exists(file + ".unreadable-2"));
    EXPECT_EQ(session.fernhop({"export"}), 0) << session.output();
}

/// A session in which the settings cannot be stored.
class UnstorableSettings : public testing::Test {
  protected:
    ~UnstorableSettings() override { session.killResident(SIGKILL); }

    void expectRoutingStaysOff() {
        EXPECT_EQ(session.fernhop({"routing", "on"}), 1);
        EXPECT_NE(session.output().find("could not be stored"), std::string::npos) << session.output();
        EXPECT_EQ(session.fernhop({"status", "--json"}), 0);
        EXPECT_NE(session.output().find(R"("routing": false)"), std::string::npos) << session.output();
        EXPECT_NE(session.output().find(R"("httpsHandler": "web")"), std::string::npos) << session.output();
    }

    LinkSession session;
};

TEST_F(UnstorableSettings, KeepAppRoutingOff) {
    session.home.write(session.home.config() + "/mimeapps.list",
                       "[Default Applications]\nx-scheme-handler/http=web.desktop\n"
                       "x-scheme-handler/https=web.desktop\n");
    // Permissions would not keep the superuser away; a file where the folder should be does.
    fs::remove_all(session.home.config() + "/fernhop");
    session.home.write(session.home.config() + "/fernhop", "in the way");
    session.startBus();
    expectRoutingStaysOff();
    session.startFernhop();
    expectRoutingStaysOff();
    fs::remove(session.home.config() + "/fernhop");
    EXPECT_EQ(session.fernhop({"routing", "on"}), 0) << session.output();
}

} // namespace
} // namespace fernhop::desktoptest
