// The tools' README level blocks compile, check without a warning and are won by their scripts.
#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>

#include "support/content_support.h"
#include "support/test_support.h"

namespace fs = std::filesystem;

namespace {

struct Example {
    std::string level;
    std::string script;
};

// The blocks between "```level" and "```", each with the "```script" block that follows it.
std::vector<Example> examples(const std::string& markdown) {
    std::vector<Example> found;
    std::istringstream lines(markdown);
    std::string line, *into = nullptr;
    while (std::getline(lines, line)) {
        if (into) {
            if (line.rfind("```", 0) == 0)
                into = nullptr;
            else
                *into += line + "\n";
        } else if (line == "```level") {
            found.emplace_back();
            into = &found.back().level;
        } else if (line == "```script" && !found.empty()) {
            into = &found.back().script;
        }
    }
    return found;
}

class ReadmeExamples : public ::testing::TestWithParam<const char*> {
protected:
    void SetUp() override {
        if (!fs::exists(toolPath("rillc")) || !fs::exists(toolPath("brookfall-headless")))
            GTEST_SKIP() << "rillc or the runner is not built";
        // The baked data, with a maps folder of the examples' own.
        for (const char* folder : {"cfg", "gfx", "snd", "fx", "text"})
            fs::create_directory_symlink(bakedDataFolder() / folder, scratch.path() / folder);
        fs::create_directory(scratch.path() / "maps");
    }
    ScratchFolder scratch;
};

}  // namespace

TEST_P(ReadmeExamples, CompileCheckWithoutAWarningAndWin) {
    const std::vector<Example> all = examples(readBytes(sourceDataFolder().parent_path() / GetParam()));
    ASSERT_FALSE(all.empty()) << "no level in " << GetParam();
    for (std::size_t i = 0; i < all.size(); ++i) {
        SCOPED_TRACE("example " + std::to_string(i));
        const std::string name = "example" + std::to_string(i);
        scratch.write(name + ".level", all[i].level);
        scratch.write(name + ".script", all[i].script.empty() ? ":step 300\n:state\n" : all[i].script);
        const fs::path level = scratch.path() / "maps" / (name + ".rill");
        const ToolRun compile =
            runTool(quoted(toolPath("rillc")) + " compile " + name + ".level " + quoted(level));
        ASSERT_EQ(compile.exitCode, 0) << compile.output;
        const ToolRun check = runTool(quoted(toolPath("rillc")) + " check --data . " + quoted(level));
        EXPECT_EQ(check.exitCode, 0);
        EXPECT_EQ(check.output.find("warning:"), std::string::npos) << check.output;
        const ToolRun play = runTool(quoted(toolPath("brookfall-headless")) + " --data . 'maps\\" + name +
                                     ".rill' " + name + ".script");
        ASSERT_EQ(play.exitCode, 0) << play.output;
        const std::vector<std::string> states = stateLines(play.output);
        ASSERT_FALSE(states.empty()) << "the script must end with :state";
        if (!all[i].script.empty()) {
            EXPECT_NE(states.back().find("\"finished\":true"), std::string::npos) << states.back();
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Tools, ReadmeExamples,
                         ::testing::Values("tools/rillc/README.md", "tools/brookfall-headless/README.md"));
