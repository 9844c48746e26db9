#include "platform/linux/dialogs-qt/LinearSystem.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace fernhop::freedesktop {
namespace {

using enum ui::LayoutRelation;

constexpr double required = 1000, strong = 750, weak = 250;

TEST(LinearSystem, EquationsAreSolved) {
    LinearSystem system(2);
    system.add({{0, 1}, {1, 1}}, equal, 10, required);
    system.add({{0, 1}, {1, -1}}, equal, 4, required);
    EXPECT_EQ(system.solve(), (std::vector<double>{7, 3}));
}

TEST(LinearSystem, WhatNothingSettlesIsZero) {
    LinearSystem system(2);
    system.add({{1, 2}}, equal, 6, weak);
    EXPECT_EQ(system.solve(), (std::vector<double>{0, 3}));
}

TEST(LinearSystem, StrongerEquationsWinWhateverTheirOrder) {
    LinearSystem system(1);
    system.add({{0, 1}}, equal, 1, weak);
    system.add({{0, 1}}, equal, 2, required);
    system.add({{0, 1}}, equal, 3, strong);
    EXPECT_EQ(system.solve(), std::vector<double>{2});
}

TEST(LinearSystem, AmongEqualsTheEarlierWins) {
    LinearSystem system(1);
    system.add({{0, 1}}, equal, 1, weak);
    system.add({{0, 1}}, equal, 2, weak);
    EXPECT_EQ(system.solve(), std::vector<double>{1});
}

TEST(LinearSystem, InequalitiesHoldThatAreStronger) {
    for (const double preferred : {100.0, 320.0, 400.0}) {
        LinearSystem system(1);
        system.add({{0, 1}}, equal, preferred, weak);
        system.add({{0, 1}}, greaterThanOrEqual, 320, required);
        system.add({{0, 1}}, lessThanOrEqual, 380, required);
        EXPECT_EQ(system.solve(), std::vector<double>{std::clamp(preferred, 320.0, 380.0)});
    }
}

TEST(LinearSystem, WeakerInequalitiesGiveWay) {
    LinearSystem system(1);
    system.add({{0, 1}}, greaterThanOrEqual, 500, strong);
    system.add({{0, 1}}, lessThanOrEqual, 300, required);
    system.add({{0, 1}}, equal, 500, weak);
    EXPECT_EQ(system.solve(), std::vector<double>{300});
}

TEST(LinearSystem, LimitIsTheLargestOfSeveral) {
    LinearSystem system(1);
    for (const double atLeast : {30.0, 45.0, 12.0})
        system.add({{0, 1}}, greaterThanOrEqual, atLeast, required);
    system.add({{0, 1}}, equal, 0, weak);
    EXPECT_EQ(system.solve(), std::vector<double>{45});
}

TEST(LinearSystem, ContradictionsAreDropped) {
    LinearSystem system(2);
    system.add({{0, 1}}, equal, 1, required);
    system.add({{0, 1}}, equal, 2, required);
    system.add({{0, 1}, {1, 1}}, equal, 5, required);
    EXPECT_EQ(system.solve(), (std::vector<double>{1, 4}));
}

} // namespace
} // namespace fernhop::freedesktop
