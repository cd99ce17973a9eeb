// Level files for the tests, written from the text form or byte by byte.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "level/level.h"
#include "level_tools/level_tools.h"
#include "support/test_support.h"

inline LevelFile levelFromText(const std::string& text) {
    LevelFile level;
    std::string error;
    EXPECT_TRUE(LevelText::parse(text, "test", level, error)) << error;
    return level;
}

inline std::string bytesFromText(const std::string& text) {
    return LevelFileFormat::write(levelFromText(text));
}

// A scratch folder with the console captured, and levels loaded from their
// text form and cleared again after the test.
class LevelTest : public ::testing::Test {
protected:
    void TearDown() override { Level::clear(); }
    void load(const std::string& text) {
        folder.write("maps/t.rill", bytesFromText(text));
        ASSERT_TRUE(Level::load("maps\\t.rill"));
        console.take();
    }

    ScratchFolder folder;
    ConsoleCapture console;
};

inline const char* const squareText =
    "water 50 50\ncamera 60 60\n"
    "polygon id 1 surface wood\n  0 0\n  100 0\n  100 100\n  0 100\nend\n";

// The full set of records, one of each kind, to cut at every byte.
inline const char* const everyRecordText =
    "water 1 2\ncamera 3 4\n"
    "polygon id 7 texture \"gfx\\rock.tga\" surface sand collision 7 layer 4\n 0 0\n 10 0\n 10 10\nend\n"
    "object id 2 texture \"gfx\\tree.tga\" layer 3 at 5 6 mirrored yes\n"
    "force id 3 at 1 2 direction 0 2 strength 1.5\n"
    "mover id 4 speed 12.5 from 0 0 to 0 100\n"
    "trigger type Entity_remove_1 target 7 delay 0.5 rect 0 0 20 20\n"
    "sound id 5 at 3 3 strength 0 looping yes name \"snd\\drip.wav\"\n"
    "emitter id 6 at 9 9 direction 0 0 settings \"fx\\spray.cfg\"\n";
