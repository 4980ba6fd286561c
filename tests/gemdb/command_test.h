// A copy of a real model to work on, and the two questions that most tests of gemdb ask.
#pragma once

#include <gtest/gtest.h>

#include "tests/support/models.h"
#include "tests/support/run_gemdb.h"

namespace stelvan::test {

class CommandTest : public ::testing::Test {
protected:
    void SetUp() override { file_ = folder_.copyOf(model("gem.mdb")); }

    void expectFailure(const std::vector<std::string>& arguments,
                       const std::string& part = "") const {
        const ProgramRun run = runGemdb(arguments);
        EXPECT_EQ(run.status, 2);
        EXPECT_EQ(splitLines(run.err).size(), 1U) << run.err;
        EXPECT_NE(run.err.find(part), std::string::npos) << run.err;
    }

    [[nodiscard]] std::vector<std::string> select(const std::string& statement) const {
        const ProgramRun run = runGemdb({"sql", file_, statement});
        EXPECT_EQ(run.status, 0) << run.err;
        return splitLines(run.out);
    }

    ScratchDir folder_;
    std::string file_;
};

}  // namespace stelvan::test
