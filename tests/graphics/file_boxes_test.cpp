// The file boxes as a player uses them: a dialog on a display of the test's
// own, a name typed and Return or Escape pressed with xdotool, and the path
// that comes back. Without zenity, xdotool or Xvfb these skip; without any
// dialog program a box answers as if cancelled.
#include <gtest/gtest.h>

#include <chrono>
#include <thread>

#include "graphics/window/window.h"
#include "private_display.h"
#include "support/content_support.h"
#include "support/test_support.h"

namespace {

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
