#pragma once

#include "cli/World.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace fernhop::cli {

/// A test of commands that runs twice: with and without a running Fernhop.
class EachSide : public testing::TestWithParam<bool>, protected World {
  protected:
    void SetUp() override {
        report.runs = GetParam();
        if (GetParam())
            launch();
    }

    nlohmann::json runJson(const std::vector<std::string> &words) {
        const auto result = run(words);
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.errors, "");
        return nlohmann::json::parse(result.output);
    }

    /// Expects that the menu, if there is one, shows the change.
    void expectMenuRebuilt() const { EXPECT_TRUE(!GetParam() || statusBar.menusSet > 0); }
};

inline std::string sideName(const testing::TestParamInfo<bool> &info) {
    return info.param ? "Resident" : "Local";
}

} // namespace fernhop::cli
