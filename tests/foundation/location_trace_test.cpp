#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <regex>

#include "foundation/foundation.h"

namespace {

// Runs the body with an empty trace and puts the caller's trace back afterwards.
class TraceTest : public ::testing::Test {
protected:
    void SetUp() override {
        savedDepth = LocationTrace::state().depth;
        LocationTrace::state().depth = 0;
    }
    void TearDown() override { LocationTrace::state().depth = savedDepth; }

    static std::string listing() {
        std::string text;
        LocationTrace::appendBacktrace(text);
        return text;
    }

    uint16_t savedDepth = 0;
};

const std::string heading = "\nBacktrace of locations visited by program: \n";

}  // namespace

TEST_F(TraceTest, ListingShowsNewestFirstAndStopsAfterSixteenLinesAndTheCounterWrapsInsideTheTable) {
    EXPECT_EQ(listing(), heading);
    LocationTrace::push("WinMain");
    EXPECT_EQ(listing(), heading + "\n1 - WinMain");
    {
        TRACE_LOCATION("Game::run");
        LocationTrace::push(nullptr);
        EXPECT_EQ(listing(), heading + "\n1 - Unknown location.\n2 - Game::run\n3 - WinMain");
        LocationTrace::pop();
    }
    EXPECT_EQ(LocationTrace::state().depth, 1);
    static std::vector<std::string> names;
    for (int i = 0; i < 20; ++i) names.push_back("n" + std::to_string(i));
    for (const std::string& name : names) LocationTrace::push(name.c_str());
    std::string expected = heading;
    for (int line = 1; line <= 16; ++line)
        expected += "\n" + std::to_string(line) + " - n" + std::to_string(20 - line);
    EXPECT_EQ(listing(), expected);
    EXPECT_EQ(LocationTrace::state().depth, 21) << "listing does not change the depth";
    LocationTrace::state().depth = 65535;
    LocationTrace::push("last slot");
    EXPECT_EQ(LocationTrace::state().depth, 0);
    EXPECT_STREQ(LocationTrace::state().names[65535], "last slot");
    LocationTrace::pop();
    EXPECT_EQ(LocationTrace::state().depth, 65535);
}

TEST(FatalReport, HeadIsElevenPaddedLinesThenTypeAndListing) {
    const std::string report = LocationTrace::buildFatalReport(SIGFPE);
    std::size_t start = 0;
    for (int line = 0; line < 11; ++line) {
        const std::size_t end = report.find('\n', start);
        ASSERT_EQ(end - start, 103u) << "line " << line + 1;
        start = end + 1;
    }
    EXPECT_EQ(report.substr(0, 23), "We are very sorry but '");
    const std::string tail =
        "\nError type: Arithmetic error. Divide by zero or invalid arithmetic operation.\n\nBacktrace";
    EXPECT_EQ(report.substr(start, tail.size()), tail);
}

namespace {

// Raises the signal with the given locations on the trace; an exit handler that
// never returns stands for a destructor waiting on a lock the fault left held.
[[noreturn]] void fault(int signal, std::vector<const char*> locations, bool stuckExit = false) {
    unsetenv("DISPLAY");
    unsetenv("WAYLAND_DISPLAY");
    LocationTrace::initialise();
    for (const char* location : locations) LocationTrace::push(location);
    if (stuckExit)
        std::atexit([] {
            for (;;) pause();
        });
    std::raise(signal);
    std::abort();
}

}  // namespace

TEST(FatalReportDeathTest, TheReportListsTheDeepestLocationFirstAndEndsTheProcess) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(fault(SIGSEGV, {}, true), ::testing::ExitedWithCode(1), "Error type: Read or write");
    EXPECT_EXIT(fault(SIGSEGV, {"WinMain", "Game::run", "ParticleManager::runSimulation"}),
                ::testing::ExitedWithCode(1),
                "A fatal program error has occured\\.\n"
                "We are very sorry but 'Brookfall' has encountered a techincal problem(.|\n)*"
                "Error type: Read or write to memory not owned by program\\.\n\n"
                "Backtrace of locations visited by program: \n\n"
                "1 - ParticleManager::runSimulation\n2 - Game::run\n3 - WinMain\n$");
    EXPECT_EXIT(fault(SIGABRT, {"WinMain"}), ::testing::ExitedWithCode(1),
                "Error type: Abnormal program termination by program\\.\n\n"
                "Backtrace of locations visited by program: \n\n1 - WinMain\n$");
}

// Every operation of the game writes its name to the trace, so that a fatal
// report can say where the program was: a function defined outside an unnamed
// namespace must begin with TRACE_LOCATION. Left out: the operating-system
// stand-ins under src/platform, the trace itself, the subsystems' state
// accessors, the splash picture's drawing, which runs on its own thread, and the
// opening of a thread's gate, which happens while that thread may be writing.
namespace {

const std::set<std::string> untraced = {"state", "SplashPicture::advance", "SplashPicture::draw",
                                        "WorkerThread::openGate"};

std::vector<std::string> operationsWithoutTrace(const std::filesystem::path& sources) {
    const std::regex definition(R"(^[\w:<>,*&\s]+?[\s*&]([\w:~]+)\(.*\)\s*(const\s*)?(noexcept\s*)?\{$)");
    const std::regex namespaceOpen(R"(^namespace\s*([\w:]*)\s*\{)");
    std::vector<std::string> missing;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(sources)) {
        const std::string path = entry.path().generic_string();
        if (entry.path().extension() != ".cpp" || path.find("/platform/") != std::string::npos ||
            path.find("location_trace.cpp") != std::string::npos ||
            path.find("main.cpp") != std::string::npos)
            continue;
        std::ifstream in(entry.path());
        std::vector<bool> anonymous;  // the namespaces open at this line
        std::string line, previous;
        bool awaitingTrace = false;
        for (int number = 1; std::getline(in, line); ++number) {
            const std::string code = line.substr(0, line.find("//"));
            std::smatch match;
            if (awaitingTrace && line.find("TRACE_LOCATION") == std::string::npos)
                missing.push_back(previous);
            awaitingTrace = false;
            if (std::regex_search(code, match, namespaceOpen)) {
                anonymous.push_back(match[1].length() == 0);
            } else if (code.rfind('}', 0) == 0 && line.find("namespace") != std::string::npos) {
                if (!anonymous.empty()) anonymous.pop_back();
            } else if (std::find(anonymous.begin(), anonymous.end(), true) == anonymous.end() &&
                       code.rfind(' ', 0) != 0 && std::regex_search(code, match, definition) &&
                       untraced.count(match[1].str()) == 0) {
                awaitingTrace = true;
                previous = path + ":" + std::to_string(number) + " " + match[1].str();
            }
        }
    }
    return missing;
}

}  // namespace

TEST(LocationTraceCoverage, EveryOperationOfTheGameTracesItself) {
    const char* source = std::getenv("BROOKFALL_SOURCE_DIR");
    ASSERT_NE(source, nullptr);
    const std::vector<std::string> missing = operationsWithoutTrace(std::filesystem::path(source) / "src");
    EXPECT_TRUE(missing.empty()) << ::testing::PrintToString(missing);
}
