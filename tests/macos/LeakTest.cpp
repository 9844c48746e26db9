#include "support/ChildProcess.h"
#include "support/TemporaryHome.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

namespace fernhop {
namespace {

constexpr int exitStatusOfLeaks = 1;

/// The exit status and output of a program that makes one of our objects.
std::pair<int, std::string> run(const std::vector<std::string> &arguments) {
    const support::TemporaryHome home;
    const std::string output = home.root() + "/output";
    std::vector<std::string> words{FERNHOP_LEAK};
    words.insert(words.end(), arguments.begin(), arguments.end());
    support::ChildProcess child({.arguments = words, .environment = {}, .output = output});
    const int status = child.wait();
    std::ifstream file(output);
    return {status, {std::istreambuf_iterator<char>(file), {}}};
}

TEST(Leaks, OfOurObjectsAreDetected) {
    const auto [status, said] = run({"forget"});
    EXPECT_EQ(status, exitStatusOfLeaks) << said;
    EXPECT_NE(said.find("LeakSanitizer: detected memory leaks"), std::string::npos) << said;
}

TEST(Leaks, ObjectsThatTheSystemKeepsAreNotReported) {
    const auto [status, said] = run({});
    EXPECT_EQ(status, 0) << said;
}

} // namespace
} // namespace fernhop
