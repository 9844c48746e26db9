#include "cli/CommandLine.h"

#include "fakes/FakeResidentConnection.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace fernhop::cli {
namespace {

/// The client, with or without a reachable resident.
class CommandLine : public testing::Test {
  protected:
    std::optional<int> run(const std::vector<std::string> &words) { return runCommandLine(words, process); }

    fakes::FakeResident resident;
    bool hasBus = true;
    int connections = 0;
    CommandResult localAnswer{0, "local\n", ""};
    std::vector<fakes::FakeResident::Call> localCalls;
    std::vector<std::string> openedHere;
    std::vector<std::string> problemsHere;
    std::istringstream input;
    std::ostringstream output;
    std::ostringstream errors;
    Process process{input,
                    output,
                    errors,
                    [this]() -> std::unique_ptr<ResidentConnection> {
                        ++connections;
                        return hasBus ? std::make_unique<fakes::FakeResidentConnection>(resident) : nullptr;
                    },
                    [this](const std::vector<std::string> &words, std::string_view read) {
                        localCalls.push_back({words, std::string(read)});
                        return localAnswer;
                    },
                    [this](const std::vector<Url> &links) {
                        for (const Url &link : links)
                            openedHere.push_back(link.absoluteString());
                        return problemsHere;
                    }};
};

TEST_F(CommandLine, BecomesTheResidentWithoutArguments) {
    EXPECT_EQ(run({}), std::nullopt);
    EXPECT_EQ(connections, 0);
}

TEST_F(CommandLine, AsksTheRunningFernhop) {
    resident.answer = CommandResult{1, "out\n", "err\n"};
    EXPECT_EQ(run({"url-rules", "add", "a b", "c"}), 1);
    EXPECT_EQ(output.str(), "out\n");
    EXPECT_EQ(errors.str(), "err\n");
    ASSERT_EQ(resident.calls.size(), 1U);
    EXPECT_EQ(resident.calls[0].arguments, (std::vector<std::string>{"url-rules", "add", "a b", "c"}));
    EXPECT_TRUE(localCalls.empty());
}

TEST_F(CommandLine, PerformsLocallyWhenNoneIsRunning) {
    EXPECT_EQ(run({"status", "--json"}), 0);
    EXPECT_EQ(output.str(), "local\n");
    ASSERT_EQ(localCalls.size(), 1U);
    EXPECT_EQ(localCalls[0].arguments, (std::vector<std::string>{"status", "--json"}));
}

TEST_F(CommandLine, PerformsLocallyWithoutABus) {
    hasBus = false;
    localAnswer = {1, "", "no\n"};
    EXPECT_EQ(run({"routing", "on"}), 1);
    EXPECT_EQ(errors.str(), "no\n");
    EXPECT_EQ(localCalls.size(), 1U);
}

TEST_F(CommandLine, NeedsNoResidentForHelpAndUsageErrors) {
    EXPECT_EQ(run({"--help"}), 0);
    EXPECT_NE(output.str(), "");
    EXPECT_EQ(run({"--version"}), 0);
    EXPECT_EQ(errors.str(), "");
    EXPECT_EQ(run({"--wrong"}), 2);
    EXPECT_NE(errors.str(), "");
    EXPECT_EQ(connections, 0);
    EXPECT_TRUE(localCalls.empty());
}

TEST_F(CommandLine, RefusesArgumentsThatAreNotUtf8) {
    resident.answer = CommandResult{};
    EXPECT_EQ(run({"url-rules", "add", "a\xff", "b"}), 2);
    EXPECT_EQ(errors.str(), "fernhop: \"a\\xff\" is not valid UTF-8.\n");
    EXPECT_TRUE(resident.calls.empty());
    EXPECT_TRUE(localCalls.empty());
}

TEST_F(CommandLine, DeliversLinks) {
    EXPECT_EQ(run({"open", "https://a.example/%F0", "https://b.example/a b\xff"}), 0);
    EXPECT_EQ(resident.opened,
              (std::vector<std::string>{"https://a.example/%F0", "https://b.example/a%20b%FF"}));
    EXPECT_EQ(output.str(), "");
    EXPECT_EQ(errors.str(), "");
}

TEST_F(CommandLine, DeliversTheOthersWhenOneIsNotALink) {
    EXPECT_EQ(run({"open", "", "https://a.example/"}), 1);
    EXPECT_EQ(resident.opened, std::vector<std::string>{"https://a.example/"});
    EXPECT_EQ(errors.str(), "fernhop: \"\" is not a URL.\n");
}

TEST_F(CommandLine, LinksLeadWhereBrowsersFindTheyLead) {
    EXPECT_EQ(run({"open", " https://a.example\\@b.example/ ", "https:[::1]/"}), 1);
    EXPECT_EQ(resident.opened, std::vector<std::string>{"https://a.example/@b.example/"});
    EXPECT_EQ(errors.str(),
              "fernhop: \"https:[::1]/\" is refused: a browser would find another host in it once "
              "it is encoded.\n");
    EXPECT_EQ(run({"explain", "https:[::1]/"}), 2);
    resident.answer = CommandResult{};
    EXPECT_EQ(run({"explain", "https:\\\\a.example"}), 0);
    ASSERT_EQ(resident.calls.size(), 1U);
    EXPECT_EQ(resident.calls[0].arguments.back(), "https://a.example");
}

TEST_F(CommandLine, ReportsWhyLinksWereNotDelivered) {
    resident.openProblems = {"Nobody is there.", "Nor here."};
    EXPECT_EQ(run({"open", "https://a.example/"}), 1);
    EXPECT_EQ(errors.str(), "fernhop: Nobody is there.\nfernhop: Nor here.\n");
    EXPECT_TRUE(openedHere.empty());
}

TEST_F(CommandLine, RoutesLinksLocallyWithoutABus) {
    hasBus = false;
    EXPECT_EQ(run({"open", "https://a.example/", "", "https://b.example/a b"}), 1);
    EXPECT_EQ(openedHere, (std::vector<std::string>{"https://a.example/", "https://b.example/a%20b"}));
    EXPECT_EQ(errors.str(), "fernhop: \"\" is not a URL.\n");
}

TEST_F(CommandLine, ReportsWhyLinksWereNotOpenedLocally) {
    hasBus = false;
    problemsHere = {"No browser."};
    EXPECT_EQ(run({"open", "https://a.example/"}), 1);
    EXPECT_EQ(errors.str(), "fernhop: No browser.\n");
}

TEST_F(CommandLine, ExplainsAnyBytes) {
    resident.answer = CommandResult{};
    EXPECT_EQ(run({"explain", "--json", "--source", "-x", "https://a.example/\xff b"}), 0);
    ASSERT_EQ(resident.calls.size(), 1U);
    EXPECT_EQ(resident.calls[0].arguments, (std::vector<std::string>{"explain", "--source", "-x", "--json",
                                                                     "--", "https://a.example/%FF%20b"}));
    EXPECT_EQ(run({"explain", ""}), 2);
    EXPECT_EQ(resident.calls.size(), 1U);
}

TEST_F(CommandLine, MatchNeedsNoResident) {
    EXPECT_EQ(run({"match", "*.pdf", "x:a.pdf", "x:b"}), 1);
    EXPECT_EQ(output.str(), "yes\nno\n");
    EXPECT_EQ(run({"match", "*.pdf", "x:a.pdf"}), 0);
    EXPECT_EQ(connections, 0);
    EXPECT_TRUE(localCalls.empty());
}

TEST_F(CommandLine, MatchReadsItsInput) {
    input.str("x:a.pdf\nx:b\n\nx:c.pdf");
    EXPECT_EQ(run({"match", "*.pdf"}), 1);
    EXPECT_EQ(output.str(), "yes\nno\nno\nyes\n");
}

TEST_F(CommandLine, MatchOfNoLinesSucceeds) {
    EXPECT_EQ(run({"match", "*.pdf"}), 0);
    EXPECT_EQ(output.str(), "");
}

/// Provides one line at a time, and records the output before each.
class Dialogue : public std::stringbuf {
  public:
    Dialogue(std::vector<std::string> given, const std::ostringstream &answers)
        : lines(std::move(given)), answered(answers) {}

    std::vector<std::string> seen; ///< the output when each line was requested

  protected:
    int_type underflow() override {
        seen.push_back(answered.str());
        if (next == lines.size())
            return traits_type::eof();
        current = lines[next++];
        setg(current.data(), current.data(), current.data() + current.size());
        return traits_type::to_int_type(current.front());
    }
    std::streamsize showmanyc() override { return 0; }

  private:
    std::vector<std::string> lines;
    const std::ostringstream &answered;
    std::string current;
    std::size_t next = 0;
};

TEST_F(CommandLine, MatchAnswersEachLineBeforeItWaitsForTheNext) {
    Dialogue dialogue({"x:a.pdf\n", "x:b\n"}, output);
    std::istream spoken(&dialogue);
    const Process talking{spoken, output, errors, process.connect, process.performHere, process.openHere};
    EXPECT_EQ(runCommandLine({"match", "*.pdf"}, talking), 1);
    EXPECT_EQ(dialogue.seen, (std::vector<std::string>{"", "yes\n", "yes\nno\n"}));
}

/// An output that fails like a closed pipe or a full disk.
class FailingOutput : public std::streambuf {
  public:
    explicit FailingOutput(int errorNumber) : reason(errorNumber) {}

    int attempts = 0;

  protected:
    int_type overflow(int_type) override { return fail(); }
    std::streamsize xsputn(const char *, std::streamsize) override {
        fail();
        return 0;
    }

  private:
    int_type fail() {
        ++attempts;
        errno = reason;
        return traits_type::eof();
    }

    int reason;
};

TEST_F(CommandLine, EndsQuietlyWhenTheReaderIsGone) {
    FailingOutput closed(EPIPE);
    std::ostream pipe(&closed);
    const Process piped{input, pipe, errors, process.connect, process.performHere, process.openHere};
    EXPECT_EQ(runCommandLine({"status"}, piped), 0);
    pipe.clear();
    EXPECT_EQ(runCommandLine({"--help"}, piped), 0);
    EXPECT_EQ(errors.str(), "");
}

TEST_F(CommandLine, MatchStopsWhenTheReaderIsGone) {
    FailingOutput closed(EPIPE);
    std::ostream pipe(&closed);
    input.str("x:a\nx:b\nx:c\n");
    const Process piped{input, pipe, errors, process.connect, process.performHere, process.openHere};
    EXPECT_EQ(runCommandLine({"match", "x"}, piped), 0);
    EXPECT_EQ(closed.attempts, 1);
    EXPECT_EQ(errors.str(), "");
}

TEST_F(CommandLine, FailsWhenTheOutputCannotBeWritten) {
    FailingOutput full(ENOSPC);
    std::ostream disk(&full);
    const Process filled{input, disk, errors, process.connect, process.performHere, process.openHere};
    EXPECT_EQ(runCommandLine({"status"}, filled), 1);
    EXPECT_NE(errors.str(), "");
}

class CommandLineFiles : public CommandLine {
  protected:
    CommandLineFiles() { std::filesystem::create_directories(folder); }
    ~CommandLineFiles() override { std::filesystem::remove_all(folder); }

    [[nodiscard]] std::string path(const std::string &name) const { return (folder / name).string(); }

    static std::string contentOf(const std::string &file) {
        std::ostringstream content;
        content << std::ifstream(file).rdbuf();
        return content.str();
    }

    const std::string document =
        R"({"version":1,"urlRules":[{"id":"1","pattern":"a b","browserBundleID":"c"}],"appRules":{"d":"e"},)"
        R"("routingFallbackBrowserID":null,"restoresDefaultBrowserOnQuit":true})";
    const std::filesystem::path folder =
        std::filesystem::path(testing::TempDir()) /
        ("fernhop-cli-" + std::string(testing::UnitTest::GetInstance()->current_test_info()->name()));
};

TEST_F(CommandLineFiles, ExportWritesAFile) {
    resident.answer = CommandResult{0, "{}\n", ""};
    std::ofstream(path("out.json")) << "something that was longer";
    EXPECT_EQ(run({"export", path("out.json")}), 0);
    EXPECT_EQ(contentOf(path("out.json")), "{}\n");
    EXPECT_EQ(output.str(), "");
    ASSERT_EQ(resident.calls.size(), 1U);
    EXPECT_EQ(resident.calls[0].arguments, std::vector<std::string>{"export"});
}

TEST_F(CommandLineFiles, ExportMakesAFileForItsOwnerAlone) {
    resident.answer = CommandResult{0, "{}\n", ""};
    EXPECT_EQ(run({"export", path("out.json")}), 0);
    using std::filesystem::perms;
    EXPECT_EQ(std::filesystem::status(path("out.json")).permissions(),
              perms::owner_read | perms::owner_write);
}

TEST_F(CommandLineFiles, ExportPrintsWithoutAFile) {
    resident.answer = CommandResult{0, "{}\n", ""};
    EXPECT_EQ(run({"export"}), 0);
    EXPECT_EQ(run({"export", "-"}), 0);
    EXPECT_EQ(output.str(), "{}\n{}\n");
}

TEST_F(CommandLineFiles, ExportReportsWhyItCouldNotWrite) {
    EXPECT_EQ(run({"export", path("no/such/folder.json")}), 1);
    EXPECT_NE(errors.str().find("could not be written: No such file"), std::string::npos) << errors.str();
}

TEST_F(CommandLineFiles, AFailedExportWritesNoFile) {
    resident.answer = CommandResult{1, "", "gone\n"};
    EXPECT_EQ(run({"export", path("out.json")}), 1);
    EXPECT_FALSE(std::filesystem::exists(path("out.json")));
    EXPECT_EQ(errors.str(), "gone\n");
}

TEST_F(CommandLineFiles, ImportReadsTheFileHere) {
    std::ofstream(path("in.json")) << std::string(1000, ' ') << document;
    EXPECT_EQ(run({"import", path("in.json")}), 0) << errors.str();
    ASSERT_EQ(localCalls.size(), 1U);
    EXPECT_EQ(localCalls[0].arguments, (std::vector<std::string>{"import", "-"}));
    EXPECT_EQ(localCalls[0].input, document) << "without the blanks";
}

TEST_F(CommandLineFiles, ImportSendsOnlyADocument) {
    resident.answer = CommandResult{};
    for (const std::string &text :
         {std::string(), std::string("{}"), std::string("{\"a\":\"\xff\0\"}", 10),
          std::string(100'000, '[') + std::string(100'000, ']'), std::string(17 << 20, ' ') + document}) {
        input.clear();
        input.str(text);
        errors.str("");
        EXPECT_EQ(run({"import", "-"}), 1);
        EXPECT_NE(errors.str(), "");
    }
    EXPECT_NE(errors.str().find("larger than 16 MiB"), std::string::npos) << errors.str();
    EXPECT_TRUE(resident.calls.empty());
}

TEST_F(CommandLineFiles, ImportReadsStandardInput) {
    input.str(document);
    resident.answer = CommandResult{};
    EXPECT_EQ(run({"import", "-"}), 0);
    ASSERT_EQ(resident.calls.size(), 1U);
    EXPECT_EQ(resident.calls[0].input, document);
}

TEST_F(CommandLineFiles, ImportReportsWhyItCouldNotRead) {
    EXPECT_EQ(run({"import", path("missing.json")}), 1);
    EXPECT_NE(errors.str().find("could not be read: No such file"), std::string::npos) << errors.str();
    EXPECT_EQ(run({"import", folder.string()}), 1);
    EXPECT_NE(errors.str().find("could not be read: Is a directory"), std::string::npos) << errors.str();
    EXPECT_TRUE(localCalls.empty());
}

TEST_F(CommandLineFiles, ImportRefusesHugeFiles) {
    std::ofstream(path("large")).close();
    std::filesystem::resize_file(path("large"), (std::uintmax_t{16} << 20U) + 1);
    EXPECT_EQ(run({"import", path("large")}), 1);
    EXPECT_NE(errors.str().find("larger than 16 MiB"), std::string::npos);
    EXPECT_TRUE(localCalls.empty());
}

} // namespace
} // namespace fernhop::cli
