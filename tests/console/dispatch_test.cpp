// Typed lines reach registered commands by shape; every wrong line is answered
// with its message and calls nothing.
#include <string>
#include <vector>

#include "console/console_state.h"
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
bool boolResult() {
    return true;
}
float floatResult() {
    return 2.5f;
}
std::string stringResult() {
    return "text result";
}

int intVariable = 7;
bool boolVariable = false;
float floatVariable = 1.5f;
template <typename T>
T& variable();
template <>
int& variable<int>() {
    return intVariable;
}
template <>
bool& variable<bool>() {
    return boolVariable;
}
template <>
float& variable<float>() {
    return floatVariable;
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

class DispatchTest : public ConsoleTest {
protected:
    void SetUp() override {
        ConsoleTest::SetUp();
        calls.clear();
        intVariable = 7;
        boolVariable = false;
        floatVariable = 1.5f;
    }
};

}  // namespace

TEST_F(DispatchTest, CommandWordIsFoundWithoutRegardToCase) {
    GLConsole::addCommand("DoIt", noArguments);
    run("doit");
    run("DOIT");
    run("DoIt");
    run("dOiT");
    EXPECT_EQ(calls, std::vector<std::string>(4, "void"));
    EXPECT_EQ(run("DOIT now"), "\nUSAGE: DoIt < nothing >");
}

TEST_F(DispatchTest, UnknownAndEmptyLines) {
    EXPECT_EQ(run("NoSuchCommand 1 2"),
              "\nUNKNOWN COMMAND. USE 'COMMANDS' FOR A LIST OF AVAILABLE COMMANDS.");
    EXPECT_EQ(run(""), "");
    EXPECT_EQ(run("     "), "");
    GLConsole::addCommand("DoIt", noArguments);
    EXPECT_EQ(run("   doit"), "");
    EXPECT_EQ(calls, std::vector<std::string>{"void"});
    EXPECT_EQ(run("   version"), "\nVersion is 1.00");
}

TEST_F(DispatchTest, OnlyBlanksSeparateTheCommandWord) {
    GLConsole::addCommand("DoIt", noArguments);
    GLConsole::enterLine("doit\t");
    EXPECT_TRUE(calls.empty());
    EXPECT_NE(printed().find("UNKNOWN COMMAND"), std::string::npos);
}

TEST_F(DispatchTest, VoidCommandWithAnyWordIsNotCalled) {
    GLConsole::addCommand("Act", noArguments);
    EXPECT_EQ(run("Act"), "");
    EXPECT_EQ(run("Act x"), "\nUSAGE: Act < nothing >");
    EXPECT_EQ(run("act 1 2 3"), "\nUSAGE: Act < nothing >");
    EXPECT_EQ(run("Act "), "");
    EXPECT_EQ(calls, (std::vector<std::string>{"void", "void"}));
}

TEST_F(DispatchTest, BoolArgument) {
    GLConsole::addCommand("SetFlag", argument<bool>);
    EXPECT_EQ(run("setflag TRUE"), "");
    EXPECT_EQ(run("setflag tRuE"), "");
    EXPECT_EQ(run("setflag false"), "");
    EXPECT_EQ(run("setflag 1"), "\nUSAGE: SetFlag < true OR false >");
    EXPECT_EQ(run("setflag"), "\nUSAGE: SetFlag < true OR false >");
    EXPECT_EQ(run("setflag true true"), "\nUSAGE: SetFlag < true OR false >");
    EXPECT_EQ(calls, (std::vector<std::string>{"true", "true", "false"}));
}

TEST_F(DispatchTest, IntArgument) {
    GLConsole::addCommand("SetCount", argument<int>);
    EXPECT_EQ(run("SetCount -17"), "");
    EXPECT_EQ(run("SetCount 12.5"), "\nUSAGE: SetCount < integer number >");
    EXPECT_EQ(run("SetCount abc"), "\nUSAGE: SetCount < integer number >");
    EXPECT_EQ(run("SetCount 1 2"), "\nUSAGE: SetCount < integer number >");
    EXPECT_EQ(run("SetCount -"), "");
    EXPECT_EQ(calls, (std::vector<std::string>{"-17", "0"}));
}

TEST_F(DispatchTest, FloatArgument) {
    GLConsole::addCommand("SetSpeed", argument<float>);
    EXPECT_EQ(run("SetSpeed 12"), "");
    EXPECT_EQ(run("SetSpeed -0.25"), "");
    EXPECT_EQ(run("SetSpeed 1e3"), "\nUSAGE: SetSpeed < number >");
    EXPECT_EQ(run("SetSpeed +1"), "\nUSAGE: SetSpeed < number >");
    EXPECT_EQ(run("SetSpeed"), "\nUSAGE: SetSpeed < number >");
    EXPECT_EQ(calls, (std::vector<std::string>{"12.000000", "-0.250000"}));
}

TEST_F(DispatchTest, ResultsArePrintedInTheirFormats) {
    GLConsole::addCommand("Answer", intResult);
    GLConsole::addCommand("Ready", boolResult);
    GLConsole::addCommand("Ratio", floatResult);
    GLConsole::addCommand("Label", stringResult);
    EXPECT_EQ(run("answer"), "\nAnswer is -42");
    EXPECT_EQ(run("ready"), "\nReady is true");
    EXPECT_EQ(run("ratio"), "\nRatio is 2.500000");
    EXPECT_EQ(run("label"), "\nLabel is text result");
}

TEST_F(DispatchTest, ResultCommandsTakeNoWords) {
    GLConsole::addCommand("Answer", intResult);
    GLConsole::addCommand("Ready", boolResult);
    GLConsole::addCommand("Ratio", floatResult);
    GLConsole::addCommand("Label", stringResult);
    EXPECT_EQ(run("answer 3"), "\nUSAGE: Answer < nothing >");
    EXPECT_EQ(run("ready true"), "\nUSAGE: Ready < nothing >");
    EXPECT_EQ(run("ratio 1 2"), "\nUSAGE: Ratio < nothing >");
    EXPECT_EQ(run("label x"), "\nUSAGE: Label < nothing >");
    // A string command looks at the text, so even a blank counts.
    EXPECT_EQ(run("label  "), "\nUSAGE: Label < nothing >");
}

TEST_F(DispatchTest, IntValueQueryAndChange) {
    GLConsole::addCommand("Lives", value<int>);
    EXPECT_EQ(run("lives"), "\nLives is 7");
    EXPECT_EQ(run("lives 3"), "\nLives is now 3");
    EXPECT_EQ(run("lives 3 4"), "\nUSAGE: Lives < integer number OR nothing >");
    EXPECT_EQ(run("lives 2.5"), "\nUSAGE: Lives < integer number OR nothing >");
    EXPECT_EQ(calls, (std::vector<std::string>{"query", "set 3"}));
    EXPECT_EQ(intVariable, 3);
}

TEST_F(DispatchTest, BoolValueQueryAndChange) {
    GLConsole::addCommand("ShowGrid", value<bool>);
    EXPECT_EQ(run("showgrid"), "\nShowGrid is false");
    EXPECT_EQ(run("showgrid TRUE"), "\nShowGrid is now true");
    EXPECT_EQ(run("showgrid 0"), "\nUSAGE: ShowGrid < true OR false OR nothing >");
    EXPECT_EQ(run("showgrid true false"), "\nUSAGE: ShowGrid < true OR false OR nothing >");
    EXPECT_EQ(calls, (std::vector<std::string>{"query", "set true"}));
}

TEST_F(DispatchTest, FloatValueQueryAndChange) {
    GLConsole::addCommand("Gravity", value<float>);
    EXPECT_EQ(run("gravity"), "\nGravity is 1.500000");
    EXPECT_EQ(run("gravity -9.81"), "\nGravity is now -9.810000");
    EXPECT_EQ(run("gravity 1e3"), "\nUSAGE: Gravity < number OR nothing >");
    EXPECT_EQ(run("gravity 1 2"), "\nUSAGE: Gravity < number OR nothing >");
    EXPECT_FLOAT_EQ(floatVariable, -9.81f);
}

TEST_F(DispatchTest, StringArgumentGetsTheRestOfTheLine) {
    GLConsole::addCommand("Say", argument<std::string>);
    EXPECT_EQ(run("say hello   big  world  "), "");
    EXPECT_EQ(run("say  two blanks"), "");
    EXPECT_EQ(run("say"), "");
    EXPECT_EQ(run("say "), "");
    EXPECT_EQ(calls, (std::vector<std::string>{"[hello   big  world  ]", "[ two blanks]", "[]", "[]"}));
}

TEST_F(DispatchTest, StringValueQueryAndChange) {
    GLConsole::addCommand("Title", textValue);
    EXPECT_EQ(run("title"), "\nTitle is old");
    EXPECT_EQ(run("title new name"), "\nTitle is now new name!");
    EXPECT_EQ(calls, (std::vector<std::string>{"[]", "[new name]"}));
}

TEST_F(DispatchTest, ReregistrationReplacesFunctionAndName) {
    GLConsole::addCommand("Lives", value<int>);
    GLConsole::addCommand("LIVES", intResult);
    ASSERT_EQ(GLConsole::state().commands.count("LIVES"), 1u);
    EXPECT_EQ(GLConsole::state().commands.at("LIVES").name, "LIVES");
    EXPECT_EQ(run("lives"), "\nLIVES is -42");
    EXPECT_EQ(run("lives 3"), "\nUSAGE: LIVES < nothing >");
}

TEST_F(DispatchTest, InvalidRegistrationsAreIgnored) {
    const std::size_t before = GLConsole::state().commands.size();
    GLConsole::addCommand("", noArguments);
    GLConsole::addCommand(nullptr, noArguments);
    GLConsole::addCommand("Two Words", noArguments);
    GLConsole::addCommand("NullFunction", static_cast<void (*)()>(nullptr));
    GLConsoleCommand unknownType{"Strange", noArguments, 5, false, false};
    GLConsole::addCommandInternal(unknownType);
    EXPECT_EQ(GLConsole::state().commands.size(), before);
    EXPECT_EQ(printed(), "");
}

TEST_F(DispatchTest, RemovedCommandIsUnknown) {
    GLConsole::addCommand("Act", noArguments);
    GLConsole::removeCommand("aCT");
    GLConsole::removeCommand(nullptr);
    GLConsole::removeCommand("NeverThere");
    EXPECT_EQ(run("act"), "\nUNKNOWN COMMAND. USE 'COMMANDS' FOR A LIST OF AVAILABLE COMMANDS.");
    EXPECT_TRUE(calls.empty());
}

TEST_F(DispatchTest, ImpossibleShapesAreReported) {
    GLConsole::addCommandInternal({"Odd", noArguments, -1, false, false});
    GLConsole::addCommandInternal({"Hollow", noArguments, GLConsoleCommand::Int, false, false});
    GLConsole::addCommandInternal({"HollowText", noArguments, GLConsoleCommand::String, false, false});
    EXPECT_EQ(run("odd"), "\nBAD COMMAND. FUNCTION RETURN / ARGUMENT TYPES ARE NOT KNOWN !");
    EXPECT_EQ(run("hollow 1"), "\nBAD COMMAND. NON VOID FUNCTION WITH NO RETURN OR ARGUMENT !");
    EXPECT_EQ(run("hollowtext"), "\nBAD COMMAND. NON VOID FUNCTION WITH NO RETURN OR ARGUMENT !");
    EXPECT_TRUE(calls.empty());
}

// A command may take itself off the registry while it runs.
void removeMyself() {
    GLConsole::removeCommand("Once");
    calls.push_back("once");
}

TEST_F(DispatchTest, CommandMayRemoveItselfWhileRunning) {
    GLConsole::addCommand("Once", removeMyself);
    run("once");
    run("once");
    EXPECT_EQ(calls, std::vector<std::string>{"once"});
}
