// The log file receives exactly the bytes printed while logging is on.
#include <unistd.h>

#include "console_fixture.h"

namespace {

const std::string commencing = "\nCommencing console log to ConsoleLog.txt";
const std::string stopped = "\nLogging stopped. All output saved to ConsoleLog.txt";

}  // namespace

using LogTest = ConsoleTest;

TEST_F(LogTest, LogHoldsWhatWasPrintedWhileLoggingWasOn) {
    GLConsole::print("\nbefore");
    GLConsole::enableLogging();
    EXPECT_TRUE(GLConsole::isLogging());
    GLConsole::print("\nduring");
    GLConsole::print('!');
    GLConsole::print(12);
    GLConsole::disableLogging();
    EXPECT_FALSE(GLConsole::isLogging());
    GLConsole::print("\nafter");
    EXPECT_EQ(scratch->read("ConsoleLog.txt"), commencing + "\nduring!12");
    EXPECT_EQ(printed(), "\nbefore" + commencing + "\nduring!12" + stopped + "\nafter");
    GLConsole::enableLogging();
    GLConsole::print("\nsecond");
    GLConsole::disableLogging();
    EXPECT_EQ(scratch->read("ConsoleLog.txt"), commencing + "\nsecond") << "each start begins a new file";
}

TEST_F(LogTest, EnablingTwiceKeepsOneLogAndDisablingTwiceOrShutdownSaysItOnce) {
    GLConsole::enableLogging();
    GLConsole::enableLogging();
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
