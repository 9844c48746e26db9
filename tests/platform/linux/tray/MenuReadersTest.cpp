#include "platform/linux/tray/MenuTree.h"

#include <gtest/gtest.h>

namespace fernhop::freedesktop {
namespace {

using namespace ui;

/// A menu of three levels: "Outer", within it "Inner", within that "Leaf", of a title.
std::shared_ptr<const Menu> nested(const char *leaf) {
    MenuItem inner("Inner", "");
    inner.submenu = Menu{{MenuItem(leaf, "a")}};
    MenuItem outer("Outer", "");
    outer.submenu = Menu{{inner}};
    return std::make_shared<const Menu>(Menu{{outer}});
}

class MenuReadersTest : public testing::Test {
  protected:
    static MenuTree treeOf(std::shared_ptr<const Menu> menu) {
        MenuTree made;
        EXPECT_TRUE(made.show(std::move(menu)));
        return made;
    }
    [[nodiscard]] MenuTree::Id below(MenuTree::Id id) const { return tree.find(id)->children.at(0); }
    [[nodiscard]] bool knows(const char *host, MenuTree::Id id) const {
        return readers.knows(host, *tree.find(id));
    }

    MenuTree tree = treeOf(nested("Leaf"));
    MenuReaders readers;
    MenuTree::Id outer = below(MenuTree::root), inner = below(outer), leaf = below(inner);
};

TEST_F(MenuReadersTest, KnowsTheLevelsThatWereRead) {
    EXPECT_FALSE(knows("a", MenuTree::root));
    readers.reads("a", tree, MenuTree::root, 0);
    EXPECT_FALSE(knows("a", MenuTree::root)) << "an item without what is beneath it";
    readers.reads("a", tree, MenuTree::root, 2);
    EXPECT_TRUE(knows("a", MenuTree::root));
    EXPECT_TRUE(knows("a", outer));
    EXPECT_FALSE(knows("a", inner));
    readers.reads("a", tree, outer, -1);
    EXPECT_TRUE(knows("a", inner));
    EXPECT_TRUE(knows("b", leaf)) << "nothing is beneath it";
    EXPECT_FALSE(knows("b", MenuTree::root));
}

TEST_F(MenuReadersTest, AChangeIsOneOfTheItemRightAboveIt) {
    readers.reads("a", tree, MenuTree::root, -1);
    EXPECT_TRUE(tree.show(nested("Another")));
    EXPECT_TRUE(knows("a", MenuTree::root));
    EXPECT_TRUE(knows("a", outer));
    EXPECT_FALSE(knows("a", inner));
    readers.reads("a", tree, MenuTree::root, -1);
    EXPECT_TRUE(knows("a", inner));
}

TEST_F(MenuReadersTest, WhatIsGoneIsForgotten) {
    readers.reads("a", tree, outer, 1);
    EXPECT_TRUE(knows("a", outer));
    const auto before = *tree.find(outer);
    readers.forgetAllBut(MenuTree());
    EXPECT_FALSE(readers.knows("a", before));
}

TEST_F(MenuReadersTest, ManyHostsDoNotAddUpForEver) {
    readers.reads("first", tree, MenuTree::root, -1);
    for (int number = 0; number < 100; ++number)
        readers.reads("host " + std::to_string(number), tree, MenuTree::root, -1);
    EXPECT_FALSE(knows("first", outer)) << "names that no host has any more are kept";
    EXPECT_TRUE(knows("host 99", outer));
}

} // namespace
} // namespace fernhop::freedesktop
