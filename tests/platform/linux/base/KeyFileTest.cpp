#include "platform/linux/base/KeyFile.h"

#include <gtest/gtest.h>

namespace fernhop::freedesktop {
namespace {

using namespace std::string_literals;
using Texts = std::vector<std::string>;

KeyFileGroup group(std::string_view contents) {
    auto read = KeyFileGroup::read(contents, "Desktop Entry");
    EXPECT_TRUE(read) << contents;
    return read.value_or(KeyFileGroup());
}

bool isRead(std::string_view contents) {
    return KeyFileGroup::read(contents, "Desktop Entry").has_value();
}

std::string textOf(const std::string &value) {
    const std::string contents = "[Desktop Entry]\nKey=" + value + "\n";
    return group(contents).text("Key");
}

Texts listOf(const std::string &value) {
    const std::string contents = "[Desktop Entry]\nKey=" + value + "\n";
    return group(contents).list("Key");
}

TEST(KeyFileGroupTest, TheGroupMustBeTheFirst) {
    EXPECT_TRUE(isRead("[Desktop Entry]"));
    EXPECT_TRUE(isRead("# comment\n\n   \n[Desktop Entry]\n"));
    EXPECT_TRUE(isRead("\xEF\xBB\xBF[Desktop Entry]\n")) << "a byte order mark";
    EXPECT_FALSE(isRead(""));
    EXPECT_FALSE(isRead("# only a comment"));
    EXPECT_FALSE(isRead("Type=Application\n[Desktop Entry]\n"));
    EXPECT_FALSE(isRead("[Other]\n[Desktop Entry]\n"));
    EXPECT_FALSE(isRead("[desktop entry]\n"));
    EXPECT_FALSE(isRead("[Desktop Entry\n"));
    EXPECT_FALSE(isRead("[Desktop Entry] x\n"));
}

TEST(KeyFileGroupTest, ALaterGroupIsNotPartOfIt) {
    const auto read = group("[Desktop Entry]\nA=1\n[Desktop Action new]\nA=2\nB=2\n[Desktop Entry]\nC=3\n");
    EXPECT_EQ(read.text("A"), "1");
    EXPECT_EQ(read.raw("B"), std::nullopt);
    EXPECT_EQ(read.raw("C"), std::nullopt);
}

TEST(KeyFileGroupTest, BlanksAroundKeysAndValuesDoNotCount) {
    const auto read = group("[Desktop Entry]\r\n  A =  one two \t\r\nB=\r\n\tC= x");
    EXPECT_EQ(read.raw("A"), "one two");
    EXPECT_EQ(read.raw("B"), "");
    EXPECT_EQ(read.raw("C"), "x") << "the last line needs no end";
}

TEST(KeyFileGroupTest, TheLastOfDuplicateKeysWins) {
    EXPECT_EQ(group("[Desktop Entry]\nA=1\nA=2\n").text("A"), "2");
}

TEST(KeyFileGroupTest, KeysAreComparedExactly) {
    const auto read = group("[Desktop Entry]\nname=x\nName[de]=y\n");
    EXPECT_EQ(read.raw("Name"), std::nullopt);
    EXPECT_EQ(read.raw("Name[de]"), "y");
}

TEST(KeyFileGroupTest, AValueMayHoldEqualsSignsAndHashes) {
    EXPECT_EQ(group("[Desktop Entry]\nA=b=c #d\n").raw("A"), "b=c #d");
}

TEST(KeyFileGroupTest, OtherLinesAreSkipped) {
    EXPECT_EQ(group("[Desktop Entry]\nnonsense\n#A=0\n=no key\nA=1\n").text("A"), "1");
}

TEST(KeyFileGroupTest, LinesWithANulAreSkipped) {
    const auto contents = "[Desktop Entry]\nA=1\nA=2\0003\nB\0=4\nC=5\n"s;
    const auto read = group(contents);
    EXPECT_EQ(read.text("A"), "1");
    EXPECT_EQ(read.text("C"), "5");
    EXPECT_EQ(read.raw("B\0"s), std::nullopt);
}

TEST(KeyFileGroupTest, EscapesAreUndone) {
    EXPECT_EQ(textOf(R"(\sa\nb\tc\rd\\e)"), " a\nb\tc\rd\\e");
    EXPECT_EQ(textOf(R"(\\n)"), "\\n");
    EXPECT_EQ(textOf(R"(C:\\x\s)"), "C:\\x ");
}

TEST(KeyFileGroupTest, AnUnknownEscapeStaysAsItIs) {
    EXPECT_EQ(textOf(R"(a\"b\$c\;d\)"), R"(a\"b\$c\;d\)");
}

TEST(KeyFileGroupTest, ListsAreSeparatedBySemicolons) {
    EXPECT_EQ(listOf("a;b;c;"), (Texts{"a", "b", "c"}));
    EXPECT_EQ(listOf("a;b"), (Texts{"a", "b"}));
    EXPECT_EQ(listOf(";;a;;"), Texts{"a"});
    EXPECT_EQ(listOf(""), Texts{});
    EXPECT_EQ(group("[Desktop Entry]\n").list("Key"), Texts{});
}

TEST(KeyFileGroupTest, AListElementMayHoldAnEscapedSemicolon) {
    EXPECT_EQ(listOf(R"(a\;b;c\sd;e\\;f)"), (Texts{"a;b", "c d", "e\\", "f"}));
    EXPECT_EQ(listOf("a\\"), Texts{"a\\"});
}

TEST(KeyFileGroupTest, OnlyTrueAndOneAreTrue) {
    const auto isTrue = [](const std::string &value) {
        const std::string contents = "[Desktop Entry]\nKey=" + value;
        return group(contents).isTrue("Key");
    };
    EXPECT_TRUE(isTrue("true"));
    EXPECT_TRUE(isTrue("1 "));
    for (const auto *value : {"false", "0", "", "True", "TRUE", "yes", "2"})
        EXPECT_FALSE(isTrue(value)) << value;
    EXPECT_FALSE(group("[Desktop Entry]\n").isTrue("Key"));
}

TEST(KeyFileGroupTest, TheFirstLocaleThatHasATextCounts) {
    const auto read = group("[Desktop Entry]\nName=none\nName[de]=de\nName[de_AT]=de_AT\nName[fr]=fr\\sx\n");
    EXPECT_EQ(read.localizedText("Name", {"de_AT", "de"}), "de_AT");
    EXPECT_EQ(read.localizedText("Name", {"de_CH", "de"}), "de");
    EXPECT_EQ(read.localizedText("Name", {"it", "fr", "de"}), "fr x");
    EXPECT_EQ(read.localizedText("Name", {"it"}), "none");
    EXPECT_EQ(read.localizedText("Name", {}), "none");
    EXPECT_EQ(read.localizedText("Other", {"de"}), std::nullopt);
}

TEST(KeyFileGroupTest, InvalidUtf8IsSkipped) {
    const auto read = group("[Desktop Entry]\nName=none\nName[de]=\xE4\nBad=\xFF\nBad[de]=good\n");
    EXPECT_EQ(read.localizedText("Name", {"de"}), "none");
    EXPECT_EQ(read.localizedText("Bad", {}), std::nullopt);
    EXPECT_EQ(read.localizedText("Bad", {"de"}), "good");
}

std::string changed(std::string_view bytes, std::string_view group, std::string_view key) {
    KeyFileText text(bytes);
    text.set(group, key, "new");
    return text.bytes();
}

TEST(KeyFileText, KeepsEveryByte) {
    for (const std::string bytes :
         {"", "\n\n", "[a]\r\nb=c\r\n", "no key file at all", "[a]\nb", "[a\n=x\n\xff\xfe"})
        EXPECT_EQ(KeyFileText(bytes).bytes(), bytes);
    const std::string withNull("[a]\nb=\0c\n", 10);
    EXPECT_EQ(KeyFileText(withNull).bytes(), withNull);
}

TEST(KeyFileText, ReadsTheLastValue) {
    const KeyFileText text("# k=0\n[g]\nk = 1 \n[h]\nk=2\n[g]\nk=3\r\n");
    EXPECT_EQ(text.value("g", "k"), "3");
    EXPECT_EQ(text.value("h", "k"), "2");
    EXPECT_EQ(text.value("g", "absent"), std::nullopt);
    EXPECT_EQ(text.value("", "k"), std::nullopt);
    EXPECT_EQ(KeyFileText("[g]\nk=1\nk[$d]\n").value("g", "k[$d]"), "");
    EXPECT_EQ(KeyFileText("k=top\n[g]\nk=1").value("", "k"), "top");
}

TEST(KeyFileText, ChangesOneLine) {
    EXPECT_EQ(changed("# hi\n[g]\na=1\nk = old\nb=2\n\n[h]\nk=3\n", "g", "k"),
              "# hi\n[g]\na=1\nk=new\nb=2\n\n[h]\nk=3\n");
}

TEST(KeyFileText, LeavesOneOfSeveral) {
    EXPECT_EQ(changed("[g]\nk=1\nk=2\n[h]\nk=3\n[g]\nk=4\nz=5\n", "g", "k"),
              "[g]\nk=new\n[h]\nk=3\n[g]\nz=5\n");
}

TEST(KeyFileText, AddsToTheGroup) {
    EXPECT_EQ(changed("[g]\na=1\n\n[h]\nb=2\n", "g", "k"), "[g]\na=1\nk=new\n\n[h]\nb=2\n");
    EXPECT_EQ(changed("[g]\n[h]\n", "g", "k"), "[g]\nk=new\n[h]\n");
    EXPECT_EQ(changed("[g]\na=1", "g", "k"), "[g]\na=1\nk=new\n");
}

TEST(KeyFileText, AddsTheGroup) {
    EXPECT_EQ(changed("", "g", "k"), "[g]\nk=new\n");
    EXPECT_EQ(changed("[h]\nb=2", "g", "k"), "[h]\nb=2\n[g]\nk=new\n");
}

TEST(KeyFileText, KnowsKeysAboveTheFirstGroup) {
    EXPECT_EQ(changed("", "", "k"), "k=new\n");
    EXPECT_EQ(changed("# hi\na=1\n\n[h]\nb=2\n", "", "k"), "# hi\na=1\nk=new\n\n[h]\nb=2\n");
    EXPECT_EQ(changed("[h]\nk=2\n", "", "k"), "k=new\n[h]\nk=2\n");
}

TEST(KeyFileText, KnowsTheGroupsThatGLibKnows) {
    for (const std::string line : {"[h]\x8d", "[h] \xbf ", " [h]", "[h]\t"})
        EXPECT_EQ(changed("[g]\na=1\n" + line + "\nb=2\n", "g", "k"), "[g]\na=1\nk=new\n" + line + "\nb=2\n");
    const std::string withZero("[h]\0junk\n", 9);
    EXPECT_EQ(changed("[g]\n" + withZero, "g", "k"), "[g]\nk=new\n" + withZero);
    EXPECT_EQ(changed("[g][$i]\n", "g][$i", "k"), "[g][$i]\nk=new\n");
}

TEST(KeyFileText, RemovesAKey) {
    KeyFileText text("[g]\nk=1\na=2\nk=3\n[h]\nk=4\n");
    text.remove("g", "k");
    EXPECT_EQ(text.bytes(), "[g]\na=2\n[h]\nk=4\n");
}

} // namespace
} // namespace fernhop::freedesktop
