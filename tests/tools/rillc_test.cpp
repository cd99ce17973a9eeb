#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>

#include "support/level_fixtures.h"

namespace {

struct ToolRun {
    std::string output;
    int exitCode = -1;
};

// The tools stand in the build folder, one above the test programs.
std::string rillcPath() {
    if (const char* binaryDir = std::getenv("BROOKFALL_BINARY_DIR")) return std::string(binaryDir) + "/rillc";
    std::error_code error;
    const std::filesystem::path self = std::filesystem::read_symlink("/proc/self/exe", error);
    return (self.parent_path().parent_path() / "rillc").string();
}

ToolRun rillc(const std::string& arguments) {
    ToolRun run;
    FILE* pipe = popen((rillcPath() + " " + arguments + " 2>&1").c_str(), "r");
    if (!pipe) return run;
    char buffer[4096];
    for (std::size_t count; (count = std::fread(buffer, 1, sizeof buffer, pipe)) > 0;)
        run.output.append(buffer, count);
    const int status = pclose(pipe);
    run.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return run;
}

class RillcTool : public ::testing::Test {
protected:
    void SetUp() override {
        if (!std::filesystem::exists(rillcPath())) GTEST_SKIP() << "rillc is not built";
    }
    ScratchFolder folder;
};

}  // namespace

TEST_F(RillcTool, CompileDumpCompileGivesTheSameBytes) {
    folder.write("all.level", everyRecordText);
    ASSERT_EQ(rillc("compile all.level all.rill").exitCode, 0);
    EXPECT_EQ(folder.read("all.rill"), bytesFromText(everyRecordText));
    const ToolRun dump = rillc("dump all.rill");
    ASSERT_EQ(dump.exitCode, 0);
    folder.write("again.level", dump.output);
    ASSERT_EQ(rillc("compile again.level again.rill").exitCode, 0);
    EXPECT_EQ(folder.read("again.rill"), folder.read("all.rill"));
}

TEST_F(RillcTool, CompileErrorsNameTheSourceLine) {
    folder.write("bad.level", "water 1 2\n\npolygon layer 9\nend\n");
    const ToolRun run = rillc("compile bad.level bad.rill");
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_EQ(run.output, "bad.level:3: field 'layer' must lie within 0 and 4\n");
    EXPECT_FALSE(std::filesystem::exists(folder.path() / "bad.rill"));
}

TEST_F(RillcTool, CheckPrintsTheReadersMessagesAndFailsOnABadFile) {
    folder.write("maps/good.rill",
                 bytesFromText(std::string(squareText) + "polygon\n0 0\n10 10\n10 0\n0 10\nend\n"));
    const ToolRun good = rillc("check maps/good.rill");
    EXPECT_EQ(good.exitCode, 0);
    EXPECT_NE(good.output.find("\nLevel 'maps/good.rill' loaded successfully.."), std::string::npos);
    EXPECT_NE(good.output.find("warning: polygon 1 (id 0) has no triangles"), std::string::npos);
    const std::string bytes = bytesFromText(squareText);
    folder.write("maps/cut.rill", bytes.substr(0, bytes.size() - 1));
    const ToolRun cut = rillc("check maps/cut.rill");
    EXPECT_EQ(cut.exitCode, 1);
    EXPECT_NE(cut.output.find("\nError reading level file 'maps/cut.rill'\nReason: Unable to read file"),
              std::string::npos);
    const ToolRun dump = rillc("dump maps/cut.rill");
    EXPECT_EQ(dump.exitCode, 1);
    EXPECT_NE(dump.output.find("Unable to read file"), std::string::npos);
}

TEST_F(RillcTool, WrongArgumentsGiveUsage) {
    const ToolRun run = rillc("compile only-one");
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_NE(run.output.find("usage: rillc compile SOURCE OUT.rill"), std::string::npos);
}
