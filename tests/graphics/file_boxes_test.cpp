// The file boxes as a player uses them: a dialog on a display of the test's
// own, a name typed and Return or Escape pressed with xdotool, and the path
// that comes back. Without zenity, xdotool or Xvfb these skip; without any
// dialog program a box answers as if cancelled.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <thread>

#include "graphics/window/window.h"
#include "support/content_support.h"
#include "support/test_support.h"

extern char** environ;

namespace {

bool installed(const char* program) {
    return runCommand(std::string("command -v ") + program + " > /dev/null 2>&1") == 0;
}

// An environment variable set for the life of the object.
class Setting {
public:
    Setting(const char* variable, const std::string& value) : name(variable) {
        const char* old = std::getenv(variable);
        if (old) previous = old;
        hadValue = old != nullptr;
        setenv(variable, value.c_str(), 1);
    }
    ~Setting() {
        if (hadValue)
            setenv(name, previous.c_str(), 1);
        else
            unsetenv(name);
    }

private:
    const char* name;
    std::string previous;
    bool hadValue = false;
};

// An X server of the test's own, so that no other test's window takes the
// keyboard focus from the dialog while it is typed into. Ending the server
// also ends a dialog on it, so nothing waits for ever.
class PrivateDisplay {
public:
    PrivateDisplay() {
        int channel[2];
        if (pipe(channel) != 0) return;
        const std::string fd = std::to_string(channel[1]);
        const char* argv[] = {"Xvfb",        "-displayfd", fd.c_str(), "-screen", "0",
                              "1100x850x24", "-nolisten",  "tcp",      nullptr};
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
        if (posix_spawnp(&server, "Xvfb", &actions, nullptr, const_cast<char**>(argv), environ) != 0)
            server = 0;
        posix_spawn_file_actions_destroy(&actions);
        close(channel[1]);
        pollfd ready{channel[0], POLLIN, 0};
        char number[16] = {};
        if (server && poll(&ready, 1, 10000) == 1 && read(channel[0], number, sizeof number - 1) > 0)
            name = ":" + std::to_string(std::atoi(number));
        close(channel[0]);
    }
    ~PrivateDisplay() { end(); }
    void end() {
        if (server <= 0) return;
        kill(server, SIGTERM);
        waitpid(server, nullptr, 0);
        server = 0;
    }
    std::string name;  // empty when no server could be started

private:
    pid_t server = 0;
};

struct Choice {
    const char* name;
    bool save;
    GLWindow::FileFilters filters;
    const char* typed;   // typed into the box, then Return; null: Escape
    const char* chosen;  // in the folder the box opened on; null: nothing chosen
};

void PrintTo(const Choice& choice, std::ostream* out) {
    *out << choice.name;
}

const GLWindow::FileFilters levelFilters = {{"Levels", "*.rill"}, {"All files", "*"}};

const Choice choices[] = {
    {"a new name gets the filter's extension", true, levelFilters, "newLevel", "newLevel.rill"},
    {"a name with a dot keeps it", true, levelFilters, "notes.txt", "notes.txt"},
    {"a filter of any extension adds none", true, {{"All files", "*.*"}}, "plain", "plain"},
    {"an existing file opens", false, levelFilters, "old.rill", "old.rill"},
    {"Escape chooses nothing", true, levelFilters, nullptr, nullptr},
};

class FileBoxes : public ::testing::TestWithParam<Choice> {};

TEST_P(FileBoxes, GiveThePathThePlayerChose) {
    if (!installed("zenity") || !installed("xdotool") || !installed("Xvfb"))
        GTEST_SKIP() << "zenity, xdotool and Xvfb are needed to show and drive a file box";
    ScratchFolder folder;
    folder.write("levels/old.rill", "level");
    PrivateDisplay display;
    ASSERT_FALSE(display.name.empty()) << "no display could be started";
    const Setting displayName("DISPLAY", display.name), home("HOME", folder.path().string());
    const Choice& choice = GetParam();
    const std::string title = "Brookfall file box";

    // The player, on a thread of its own while the box holds the test's thread.
    std::thread player([&] {
        const std::string find = "timeout 20 xdotool search --sync --name '" + title + "'";
        if (runCommand(find + " windowfocus --sync %1 > /dev/null 2>&1") != 0) return display.end();
        if (choice.typed)
            runCommand("timeout 20 xdotool type --delay 30 '" + std::string(choice.typed) + "'");
        // A key pressed while the box still settles may go unseen: again until the box has gone.
        for (int tries = 0; tries < 40; ++tries) {
            std::this_thread::sleep_for(std::chrono::milliseconds(500));
            if (runCommand("timeout 5 xdotool search --name '" + title + "' > /dev/null 2>&1") != 0) return;
            runCommand(std::string("timeout 5 xdotool key ") + (choice.typed ? "Return" : "Escape"));
        }
        display.end();  // the box would not go: ending its display ends it
    });
    const std::string path = choice.save ? GLWindow::showSaveFileBox(title.c_str(), "levels", choice.filters)
                                         : GLWindow::showOpenFileBox(title.c_str(), "levels", choice.filters);
    player.join();
    EXPECT_EQ(path, choice.chosen ? (folder.path() / "levels" / choice.chosen).string() : "");
}
INSTANTIATE_TEST_SUITE_P(Window, FileBoxes, ::testing::ValuesIn(choices));

TEST(FileBoxes, WithoutADialogProgramAnswerAsCancelled) {
    const Setting path("PATH", "/nonexistent");
    EXPECT_EQ(GLWindow::showOpenFileBox("Open", "", levelFilters), "");
    EXPECT_EQ(GLWindow::showSaveFileBox("Save", "", levelFilters), "");
}

}  // namespace
