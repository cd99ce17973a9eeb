// Typed lines reach registered commands by shape; every wrong line is answered
// with its message and calls nothing.

#include "console_fixture.h"

namespace {

// What the test commands received, in call order.
std::vector<std::string> calls;

template <typename T>
std::string describe(T value) {
    return std::to_string(value);
}
std::string describe(bool value) {
    return value ? "true" : "false";
}
std::string describe(const std::string& value) {
    return "[" + value + "]";
}

void noArguments() {
    calls.push_back("void");
}
template <typename T>
void argument(T value) {
    calls.push_back(describe(value));
}
int intResult() {
    return -42;
}

template <typename T>
T& variable() {
    static T stored{};
    return stored;
}

template <typename T>
T value(T newValue, bool set) {
    calls.push_back(set ? "set " + describe(newValue) : "query");
    if (set) variable<T>() = newValue;
    return variable<T>();
}

std::string textValue(std::string text) {
    calls.push_back(describe(text));
    return text.empty() ? "old" : text + "!";
}

// Every test starts with one command of each shape registered.
class DispatchTest : public ConsoleTest {
protected:
    void SetUp() override {
        ConsoleTest::SetUp();
        calls.clear();
        variable<int>() = 7;
        variable<bool>() = false;
        variable<float>() = 1.5f;
        GLConsole::addCommand("DoIt", noArguments);
        GLConsole::addCommand("SetFlag", argument<bool>);
        GLConsole::addCommand("SetCount", argument<int>);
        GLConsole::addCommand("SetSpeed", argument<float>);
        GLConsole::addCommand("Say", argument<std::string>);
        GLConsole::addCommand("Answer", intResult);
        GLConsole::addCommand(
            "Ready", +[] { return true; });
        GLConsole::addCommand(
            "Ratio", +[] { return 2.5f; });
        GLConsole::addCommand(
            "Label", +[] { return std::string("text result"); });
        GLConsole::addCommand("Lives", value<int>);
        GLConsole::addCommand("ShowGrid", value<bool>);
        GLConsole::addCommand("Gravity", value<float>);
        GLConsole::addCommand("Title", textValue);
    }
};

// A typed line, what it prints after its echo, and the one call it makes (none if null).
using Line = std::tuple<const char*, const char*, const char*>;

class LineDispatch : public DispatchTest, public ::testing::WithParamInterface<Line> {};

TEST_P(LineDispatch, PrintsItsAnswerAndCallsAtMostOnce) {
    const auto& [typed, answer, call] = GetParam();
    EXPECT_EQ(run(typed), answer);
    EXPECT_EQ(calls, call ? std::vector<std::string>{call} : std::vector<std::string>{});
}

const char* const unknown = "\nUNKNOWN COMMAND. USE 'COMMANDS' FOR A LIST OF AVAILABLE COMMANDS.";

INSTANTIATE_TEST_SUITE_P(
    EveryShape, LineDispatch,
    ::testing::Values(
        // The command word is found without regard to case, after leading blanks.
        Line{"doit", "", "void"}, Line{"DOIT", "", "void"}, Line{"dOiT", "", "void"},
        Line{"   doit", "", "void"}, Line{"doit ", "", "void"},
        Line{"DOIT now", "\nUSAGE: DoIt < nothing >", nullptr},
        Line{"doit 1 2 3", "\nUSAGE: DoIt < nothing >", nullptr}, Line{"NoSuchCommand 1 2", unknown, nullptr},
        Line{"", "", nullptr}, Line{"     ", "", nullptr}, Line{"   version", "\nVersion is 1.00", nullptr},
        // Arguments.
        Line{"setflag TRUE", "", "true"}, Line{"setflag tRuE", "", "true"},
        Line{"setflag false", "", "false"}, Line{"setflag 1", "\nUSAGE: SetFlag < true OR false >", nullptr},
        Line{"setflag", "\nUSAGE: SetFlag < true OR false >", nullptr},
        Line{"setflag true true", "\nUSAGE: SetFlag < true OR false >", nullptr},
        Line{"SetCount -17", "", "-17"}, Line{"SetCount -", "", "0"},
        Line{"SetCount 12.5", "\nUSAGE: SetCount < integer number >", nullptr},
        Line{"SetCount abc", "\nUSAGE: SetCount < integer number >", nullptr},
        Line{"SetCount 1 2", "\nUSAGE: SetCount < integer number >", nullptr},
        Line{"SetSpeed 12", "", "12.000000"}, Line{"SetSpeed -0.25", "", "-0.250000"},
        Line{"SetSpeed 1e3", "\nUSAGE: SetSpeed < number >", nullptr},
        Line{"SetSpeed +1", "\nUSAGE: SetSpeed < number >", nullptr},
        Line{"SetSpeed", "\nUSAGE: SetSpeed < number >", nullptr},
        // A string argument gets the rest of the line.
        Line{"say hello   big  world  ", "", "[hello   big  world  ]"},
        Line{"say  two blanks", "", "[ two blanks]"}, Line{"say", "", "[]"}, Line{"say ", "", "[]"},
        // Results are printed in their formats and take no words; a string one even counts a blank.
        Line{"answer", "\nAnswer is -42", nullptr}, Line{"ready", "\nReady is true", nullptr},
        Line{"ratio", "\nRatio is 2.500000", nullptr}, Line{"label", "\nLabel is text result", nullptr},
        Line{"answer 3", "\nUSAGE: Answer < nothing >", nullptr},
        Line{"ready true", "\nUSAGE: Ready < nothing >", nullptr},
        Line{"ratio 1 2", "\nUSAGE: Ratio < nothing >", nullptr},
        Line{"label x", "\nUSAGE: Label < nothing >", nullptr},
        Line{"label  ", "\nUSAGE: Label < nothing >", nullptr},
        // Values are queried bare and changed with one word; the new value is read back.
        Line{"lives", "\nLives is 7", "query"}, Line{"lives 3", "\nLives is now 3", "set 3"},
        Line{"lives 3 4", "\nUSAGE: Lives < integer number OR nothing >", nullptr},
        Line{"lives 2.5", "\nUSAGE: Lives < integer number OR nothing >", nullptr},
        Line{"showgrid", "\nShowGrid is false", "query"},
        Line{"showgrid TRUE", "\nShowGrid is now true", "set true"},
        Line{"showgrid 0", "\nUSAGE: ShowGrid < true OR false OR nothing >", nullptr},
        Line{"showgrid true false", "\nUSAGE: ShowGrid < true OR false OR nothing >", nullptr},
        Line{"gravity", "\nGravity is 1.500000", "query"},
        Line{"gravity -9.81", "\nGravity is now -9.810000", "set -9.810000"},
        Line{"gravity 1e3", "\nUSAGE: Gravity < number OR nothing >", nullptr},
        Line{"gravity 1 2", "\nUSAGE: Gravity < number OR nothing >", nullptr},
        Line{"title", "\nTitle is old", "[]"},
        Line{"title new name", "\nTitle is now new name!", "[new name]"}));

TEST_F(DispatchTest, ReregistrationReplacesFunctionAndNameAndOnlyBlanksSeparateTheCommandWord) {
    GLConsole::addCommand("LIVES", intResult);
    ASSERT_EQ(GLConsole::state().commands.count("LIVES"), 1u);
    EXPECT_EQ(GLConsole::state().commands.at("LIVES").name, "LIVES");
    EXPECT_EQ(run("lives"), "\nLIVES is -42");
    EXPECT_EQ(run("lives 3"), "\nUSAGE: LIVES < nothing >");
    GLConsole::enterLine("doit\t");
    EXPECT_TRUE(calls.empty());
    EXPECT_NE(printed().find("UNKNOWN COMMAND"), std::string::npos);
}

TEST_F(DispatchTest, InvalidRegistrationsAreIgnoredAndRemovedCommandsAreUnknown) {
    const std::size_t before = GLConsole::state().commands.size();
    GLConsole::addCommand("", noArguments);
    GLConsole::addCommand(nullptr, noArguments);
    GLConsole::addCommand("Two Words", noArguments);
    GLConsole::addCommand("NullFunction", static_cast<void (*)()>(nullptr));
    GLConsole::addCommandInternal({"Strange", noArguments, 5, false, false});
    EXPECT_EQ(GLConsole::state().commands.size(), before);
    EXPECT_EQ(printed(), "");
    GLConsole::removeCommand("dOIT");
    GLConsole::removeCommand(nullptr);
    GLConsole::removeCommand("NeverThere");
    EXPECT_EQ(run("doit"), unknown);
    EXPECT_TRUE(calls.empty());
}

// A command may take itself off the registry while it runs.
void removeMyself() {
    GLConsole::removeCommand("Once");
    calls.push_back("once");
}

TEST_F(DispatchTest, ImpossibleShapesAreReportedAndACommandMayRemoveItselfWhileRunning) {
    GLConsole::addCommandInternal({"Odd", noArguments, -1, false, false});
    GLConsole::addCommandInternal({"Hollow", noArguments, GLConsoleCommand::Int, false, false});
    GLConsole::addCommandInternal({"HollowText", noArguments, GLConsoleCommand::String, false, false});
    EXPECT_EQ(run("odd"), "\nBAD COMMAND. FUNCTION RETURN / ARGUMENT TYPES ARE NOT KNOWN !");
    EXPECT_EQ(run("hollow 1"), "\nBAD COMMAND. NON VOID FUNCTION WITH NO RETURN OR ARGUMENT !");
    EXPECT_EQ(run("hollowtext"), "\nBAD COMMAND. NON VOID FUNCTION WITH NO RETURN OR ARGUMENT !");
    EXPECT_TRUE(calls.empty());
    GLConsole::addCommand("Once", removeMyself);
    for (int i = 0; i < 2; ++i) run("once");
    EXPECT_EQ(calls, std::vector<std::string>{"once"});
}

// Commands that take several words check them against a pattern, a letter a word.
TEST_F(DispatchTest, SeveralArgumentsAreCheckedWordByWordAgainstTheirPattern) {
    const std::pair<const char*, bool> lines[] = {
        {"1.5 -2 true word", true}, {"1.5 -2 true", false},        {"1.5 -2 true word more", false},
        {"x -2 true word", false},  {"1.5 -2.5 true word", false}, {"1.5 -2 yes word", false},
    };
    for (const auto& [line, fits] : lines) {
        std::vector<std::string> words{"left over"};
        EXPECT_EQ(GLConsole::readArguments(line, "nibs", "\nUSAGE: Test", words), fits) << line;
        EXPECT_EQ(printed(), fits ? "" : "\nUSAGE: Test") << line;
        if (fits) {
            EXPECT_EQ(words, (std::vector<std::string>{"1.5", "-2", "true", "word"}));
        }
    }
}

}  // namespace
