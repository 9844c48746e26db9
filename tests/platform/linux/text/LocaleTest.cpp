#include "platform/Text.h"
#include "platform/linux/text/ComparisonForm.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <map>
#include <string>

namespace fernhop::text {

namespace {

/// The name of a locale in a process that starts with these variables and changes them afterwards.
std::string currentIn(const std::map<std::string, std::string> &environment,
                      const Locale &(*current)() = &Locale::current) {
    int ends[2];
    if (pipe(ends) != 0)
        return "no pipe";
    const pid_t child = fork();
    if (child == 0) {
        for (const char *variable : {"LC_ALL", "LC_CTYPE", "LC_COLLATE", "LANG"})
            unsetenv(variable);
        for (const auto &[variable, value] : environment)
            setenv(variable.c_str(), value.c_str(), 1);
        std::string name = current().name;
        setenv("LC_ALL", "xx_XX", 1);
        name += current().name == name ? "" : " changed";
        _exit(write(ends[1], name.data(), name.size()) == static_cast<ssize_t>(name.size()) ? 0 : 1);
    }
    close(ends[1]);
    char buffer[256];
    const ssize_t length = read(ends[0], buffer, sizeof buffer);
    close(ends[0]);
    waitpid(child, nullptr, 0);
    return {buffer, static_cast<std::size_t>(std::max<ssize_t>(length, 0))};
}

} // namespace

TEST(Locale, IsReadFromTheEnvironmentOnceInPosixOrder) {
    EXPECT_EQ(currentIn({{"LC_ALL", "tr_TR.UTF-8"}, {"LC_CTYPE", "de_DE"}, {"LANG", "en_US"}}),
              "tr_TR.UTF-8");
    EXPECT_EQ(currentIn({{"LC_CTYPE", "de_DE"}, {"LANG", "en_US"}}), "de_DE");
    EXPECT_EQ(currentIn({{"LANG", "en_US"}}), "en_US");
}

TEST(Locale, ForSortingHasAVariableOfItsOwn) {
    const auto sortingIn = [](const std::map<std::string, std::string> &environment) {
        return currentIn(environment, &Locale::currentForSorting);
    };
    EXPECT_EQ(sortingIn({{"LC_ALL", "tr_TR"}, {"LC_COLLATE", "de_DE"}, {"LANG", "en_US"}}), "tr_TR");
    EXPECT_EQ(sortingIn({{"LC_COLLATE", "de_DE"}, {"LC_CTYPE", "tr_TR"}, {"LANG", "en_US"}}), "de_DE");
    EXPECT_EQ(sortingIn({{"LC_COLLATE", ""}, {"LC_CTYPE", "tr_TR"}, {"LANG", "en_US"}}), "en_US");
    EXPECT_EQ(currentIn({{"LC_COLLATE", "de_DE"}, {"LANG", "en_US"}}), "en_US");
}

TEST(Locale, IsNotNamedByAnEmptyVariable) {
    EXPECT_EQ(currentIn({{"LC_ALL", ""}, {"LC_CTYPE", ""}, {"LANG", "en_US"}}), "en_US");
    EXPECT_EQ(currentIn({}), "");
}

TEST(Locale, HasTheRulesOfItsLanguage) {
    for (const char *name : {"tr", "tr_TR.UTF-8", "tr-TR", "TR", "az", "az_AZ@latin", "tr@euro", "tr.UTF-8"})
        EXPECT_EQ(caseRules({name}), CaseRules::turkic) << name;
    for (const char *name : {"lt", "lt_LT.UTF-8"})
        EXPECT_EQ(caseRules({name}), CaseRules::lithuanian) << name;
    for (const char *name :
         {"", "C", "C.UTF-8", "POSIX", "en_TR", "trv", "de_DE.UTF-8", "x_lt", "_tr", "....."})
        EXPECT_EQ(caseRules({name}), CaseRules::usual) << name;
}

TEST(Locale, NamesNoLanguageInThePosixOne) {
    EXPECT_EQ(languageOf("C.UTF-8"), "");
    EXPECT_EQ(languageOf("POSIX"), "");
    EXPECT_EQ(languageOf("de_DE.UTF-8"), "de");
}

} // namespace fernhop::text
