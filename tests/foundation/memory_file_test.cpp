#include <gtest/gtest.h>

#include "foundation/foundation.h"
#include "support/test_support.h"

namespace {

void expectClosed(const MemoryFile& file) {
    EXPECT_EQ(std::tuple(file.is_open(), file.error(), file.good(), file.eof(), file.size()),
              std::tuple(false, true, false, true, 0u));
}

}  // namespace

TEST(MemoryFile, ReadsAreAllOrNothing) {
    ScratchFolder folder;
    folder.write("DATA/file.bin", "abcdef");
    MemoryFile file;
    file.open("data\\FILE.BIN");
    ASSERT_TRUE(file.is_open());
    EXPECT_EQ(file.size(), 6u);

    char buffer[8] = {};
    file.read(buffer, 2);
    EXPECT_STREQ(buffer, "ab");
    file.read(buffer, 4);
    EXPECT_EQ(std::tuple(std::string(buffer, 4), file.eof(), file.good(), file.error()),
              std::tuple("cdef", true, false, false));

    char untouched[2] = {'x', 'y'};
    file.read(untouched, 1);
    EXPECT_EQ(std::tuple(file.error(), file.tell(), untouched[0]), std::tuple(true, 6u, 'x'));
}

TEST(MemoryFile, SeekClampsAndSetsTheStickyError) {
    ScratchFolder folder;
    folder.write("file.bin", "0123456789");
    MemoryFile file;
    file.open("file.bin");

    file.seek(10, 2);
    EXPECT_EQ(std::tuple(file.error(), file.eof()), std::tuple(false, true));
    file.seek(0, 1);
    EXPECT_EQ(file.tell(), 10u);
    file.seek(10, 1);
    EXPECT_EQ(file.tell(), 0u);
    file.seek(3, 0);
    EXPECT_EQ(file.tell(), 3u);
    file.seek(5, 7);
    EXPECT_EQ(std::tuple(file.tell(), file.error()), std::tuple(3u, false));

    file.seek(11, 2);
    EXPECT_EQ(std::tuple(file.tell(), file.error()), std::tuple(10u, true));
    file.seek(2, 2);
    EXPECT_TRUE(file.error()) << "a good seek does not clear an earlier error";

    file.open("file.bin");
    file.seek(-1, 0);
    EXPECT_EQ(std::tuple(file.tell(), file.error()), std::tuple(0u, true));
}

TEST(MemoryFile, CopiesAreDeepAndKeepTheReadOffset) {
    ScratchFolder folder;
    folder.write("file.bin", "hello");
    MemoryFile original;
    original.open("file.bin");
    original.seek(2, 2);

    MemoryFile copy(original);
    original.close();
    ASSERT_TRUE(copy.is_open());
    EXPECT_EQ(copy.tell(), 2u);
    char buffer[3];
    copy.read(buffer, 3);
    EXPECT_EQ(std::string(buffer, 3), "llo");

    MemoryFile closedCopy;
    closedCopy = original;
    expectClosed(closedCopy);
    copy = copy;
    EXPECT_TRUE(copy.is_open());
}
