// Tab completes the command word, cycling through the registry in key order.
#include "console_fixture.h"

using namespace ConsoleKeys;

using CompletionTest = ConsoleTest;

namespace {

// A script played on an empty line and the completed line it leaves, the cursor at its end.
using Completion = std::pair<const char*, const char*>;

class Completions : public CompletionTest, public ::testing::WithParamInterface<Completion> {};

TEST_P(Completions, LeaveTheLine) {
    play(GetParam().first);
    EXPECT_EQ(std::tuple(input(), cursor()), std::tuple(GetParam().second, static_cast<int>(input().size())));
}

INSTANTIATE_TEST_SUITE_P(Tab, Completions,
                         ::testing::Values(
                             // Candidates cycle in key order; an empty line shows the first command.
                             Completion{"Te{tab}", "TextureList"},
                             Completion{"Te{tab}{tab}{tab}{tab}", "TextureReload"},
                             Completion{"Te{tab}{tab}{tab}{tab}{tab}{tab}", "TextureMemory"},
                             Completion{"{tab}", "AnisotropicFilteringLevel"},
                             // A single candidate stays; no candidate leaves the line.
                             Completion{"vers{tab}{tab}{tab}", "Version"}, Completion{"zz{tab}{tab}", "zz"},
                             // Typing starts a new completion from the whole line.
                             Completion{"te{tab}{bs}{bs}{bs}{bs}", "Texture"},
                             Completion{"te{tab}{bs}{bs}{bs}{bs}q{tab}{tab}", "TextureQuality"},
                             // Keys that leave the line as it is keep the cycle going.
                             Completion{"te{tab}{up}{tab}", "TextureMemory"},
                             Completion{"te{tab}{up}{tab}{end}{left}{tab}", "TextureQuality"},
                             Completion{"te{tab}{home}{bs}{tab}", "TextureMemory"},
                             // Only the command word is completed.
                             Completion{"map te{tab}", "map te"}));

}  // namespace
