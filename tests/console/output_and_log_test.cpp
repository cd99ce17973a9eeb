// The circular output store, the print overloads, and the log file, which receives
// exactly the bytes printed while logging is on.
#include <unistd.h>

#include <climits>

#include "console_fixture.h"
#include "support/allocations/allocation_count.h"

namespace {

// The text that stands in the store from `start` up to the output position.
std::string storeFrom(int start) {
    std::string text;
    const int end = GLConsole::state().outputPosition;
    for (int i = start; i != end; i = (i + 1) % GLConsole::outputBufferSize)
        text += GLConsole::state().outputBuffer[i];
    return text;
}

}  // namespace

using OutputTest = ConsoleTest;

TEST_F(OutputTest, TheClearCommandFillsTheStoreWithNewlinesAndKeepsTheHistoryButNotTheLine) {
    GLConsole::print("\nsomething");
    run("clear");
    EXPECT_EQ(GLConsole::state().outputPosition, 0);
    EXPECT_EQ(std::string(GLConsole::state().outputBuffer, GLConsole::outputBufferSize),
              std::string(GLConsole::outputBufferSize, '\n'));
    typeLine("version");
    typeText("draft");
    GLConsole::clear();
    EXPECT_EQ(std::tuple(input(), cursor()), std::tuple("", 0));
    GLConsole::keyPressed(ConsoleKeys::up);
    EXPECT_EQ(input(), "version");
}

TEST_F(OutputTest, PrintedBytesEnterTheStoreAndThePositionWrapsAfterTheLastByte) {
    GLConsole::clear();
    GLConsole::print("\nab\tc");
    GLConsole::print('d');
    EXPECT_EQ(storeFrom(0), "\nab\tcd");
    GLConsole::print(std::string(GLConsole::outputBufferSize - 9, '.'));
    EXPECT_EQ(GLConsole::state().outputPosition, GLConsole::outputBufferSize - 3);
    GLConsole::print("ABCDE");
    EXPECT_EQ(GLConsole::state().outputPosition, 2);
    const char* store = GLConsole::state().outputBuffer;
    EXPECT_EQ(std::tuple(std::string(store + GLConsole::outputBufferSize - 3, 3), std::string(store, 3),
                         storeFrom(GLConsole::outputBufferSize - 5)),
              std::tuple("ABC", "DEb", "..ABCDE"));
    for (int i = 0; i < GLConsole::outputBufferSize - 2; ++i) GLConsole::print('x');
    EXPECT_EQ(GLConsole::state().outputPosition, 0);
    GLConsole::print('y');
    EXPECT_EQ(store[0], 'y');
}

// Read back from the store, as the capture would allocate.
TEST_F(OutputTest, EveryOverloadPrintsItsFormatWithoutAllocating) {
    capture.reset();
    const std::string text = "|a string long enough to live outside the object itself";
    GLConsole::printTitle("warm up");
    GLConsole::clear();
    const AllocationCount count;
    GLConsole::print("text");
    GLConsole::print(static_cast<const char*>(nullptr));
    GLConsole::print(text);
    GLConsole::print('|');
    GLConsole::print(4294967295u);
    GLConsole::print('|');
    GLConsole::print(INT_MIN);
    GLConsole::print('|');
    GLConsole::print(true);
    GLConsole::print(false);
    GLConsole::print('|');
    GLConsole::print(0.1f);
    GLConsole::print('|');
    GLConsole::print(-1234567.125);
    GLConsole::printTitle("Heading");
    GLConsole::printTitle(text);
    EXPECT_EQ(count.made(), 0);
    const std::string rule = "\n\n" + std::string(64, '*') + "\n\n";
    EXPECT_EQ(storeFrom(0), "text" + text + "|4294967295|-2147483648|truefalse|0.100000|-1234567.125000" +
                                rule + "Heading" + rule + rule + text + rule);
}

namespace {

const std::string commencing = "\nCommencing console log to ConsoleLog.txt";
const std::string stopped = "\nLogging stopped. All output saved to ConsoleLog.txt";

}  // namespace

using LogTest = ConsoleTest;

TEST_F(LogTest, EnablingTwiceKeepsOneLogAndDisablingTwiceOrShutdownSaysItOnce) {
    for (int i = 0; i < 2; ++i) GLConsole::enableLogging();
    GLConsole::disableLogging();
    GLConsole::disableLogging();
    EXPECT_EQ(printed(), commencing + stopped);
    GLConsole::enableLogging();
    GLConsole::shutdown();
    EXPECT_FALSE(GLConsole::isLogging());
    EXPECT_EQ(printed(), commencing + stopped);
}

TEST_F(LogTest, LogConsoleCommandTurnsLoggingOnAndOff) {
    typeLine("logconsole");
    EXPECT_EQ(printed(), "\nlogconsole\nLogConsole is false");
    typeLine("logconsole true");
    EXPECT_EQ(printed(), "\nlogconsole true" + commencing + "\nLogConsole is now true");
    typeLine("LogConsole false");
    EXPECT_EQ(printed(), "\nLogConsole false" + stopped + "\nLogConsole is now false");
    EXPECT_EQ(scratch->read("ConsoleLog.txt"), commencing + "\nLogConsole is now true\nLogConsole false");
}

TEST_F(LogTest, UnwritableLogIsReported) {
    std::filesystem::create_directory(scratch->path() / "ConsoleLog.txt");
    GLConsole::enableLogging();
    EXPECT_FALSE(GLConsole::isLogging());
    EXPECT_EQ(printed(), "\nUnable to write log to ConsoleLog.txt");
}

TEST_F(LogTest, WriteErrorStopsLoggingAndIsReportedAheadOfTheTextOrAfterASingleCharacter) {
    if (!std::filesystem::exists("/dev/full")) GTEST_SKIP() << "no /dev/full on this machine";
    ASSERT_EQ(symlink("/dev/full", (scratch->path() / "ConsoleLog.txt").c_str()), 0);
    GLConsole::enableLogging();
    EXPECT_FALSE(GLConsole::isLogging());
    EXPECT_EQ(printed(), "\nLogging to ConsoleLog.txt stopped because of a write error." + commencing);
    GLConsole::print("\ngame goes on");
    GLConsole::print('.');
    EXPECT_EQ(printed(), "\ngame goes on.");
    // Logging can be started again; it fails the same way and says so again.
    typeLine("LogConsole true");
    EXPECT_EQ(printed(), "\nLogConsole true\nLogging to ConsoleLog.txt stopped because of a write error." +
                             commencing + "\nLogConsole is now false");
    std::filesystem::remove(scratch->path() / "ConsoleLog.txt");
    GLConsole::enableLogging();
    ASSERT_TRUE(GLConsole::isLogging());
    // Swap the open log for one that can't take a byte.
    std::fclose(GLConsole::state().logFile);
    GLConsole::state().logFile = std::fopen("/dev/full", "wb");
    ASSERT_NE(GLConsole::state().logFile, nullptr);
    printed();
    GLConsole::print('c');
    EXPECT_FALSE(GLConsole::isLogging());
    EXPECT_EQ(printed(), "c\nLogging to ConsoleLog.txt stopped because of a write error.");
}
