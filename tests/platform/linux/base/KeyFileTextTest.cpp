#include "platform/linux/base/KeyFileText.h"

#include <gtest/gtest.h>

namespace fernhop::freedesktop {
namespace {

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

TEST(KeyFileText, KeepsWhatIsInvalidAsComments) {
    KeyFileText text("stray=1\n\n[g]\na=1\nwhat is this\n[broken\nEncoding=KOI8-R\n=x\n# fine\nb=2\n");
    EXPECT_TRUE(text.makeValid());
    EXPECT_EQ(text.bytes(),
              "#stray=1\n\n[g]\na=1\n#what is this\n#[broken\n#Encoding=KOI8-R\n#=x\n# fine\nb=2\n");
}

TEST(KeyFileText, LeavesAValidTextAlone) {
    const std::string bytes = "# c\n\n[g]\r\n a = \xff\n";
    KeyFileText text(bytes);
    EXPECT_TRUE(text.makeValid());
    EXPECT_EQ(text.bytes(), bytes);
}

} // namespace
} // namespace fernhop::freedesktop
