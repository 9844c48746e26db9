#include "cli/Table.h"

#include <gtest/gtest.h>

namespace fernhop::cli {
namespace {

TEST(Table, AlignsItsColumns) {
    Table table({"NAME", "ID"});
    table.add({"Alpha Browser", "a"});
    table.add({"B", "b"});
    EXPECT_EQ(table.text(), "NAME           ID\n"
                            "Alpha Browser  a\n"
                            "B              b\n");
}

TEST(Table, AlignsByTerminalColumns) {
    Table table({"NAME", "ID"});
    table.add({"火狐", "wide"});
    table.add({"é", "narrow"});
    EXPECT_EQ(table.text(), "NAME  ID\n"
                            "火狐  wide\n"
                            "é     narrow\n");
}

TEST(Table, KeepsEachRowOnItsLine) {
    Table table({"NAME", "ID"});
    table.add({"a\nb", "\x1b]0;x\x07"});
    EXPECT_EQ(table.text(), "NAME    ID\n"
                            "a\\x0ab  \\x1b]0;x\\x07\n");
}

TEST(Table, RemovesTrailingSpaces) {
    Table table({"NAME", "SCHEMES"});
    table.add({"Alpha", ""});
    EXPECT_EQ(table.text(), "NAME   SCHEMES\nAlpha\n");
}

} // namespace
} // namespace fernhop::cli
