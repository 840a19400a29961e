#include "script/XScriptRunner.h"

#include "common/XException.h"
#include "common/XStop.h"
#include "script/XScript.h"
#include "script/XScriptBuilder.h"
#include "script/XScriptEnvBase.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <random>
#include <string>
#include <vector>

namespace huge {
namespace {

using Image = std::vector<uint8_t>;

HugeVariant runImage(Image image)
{
    return XScriptRunner(std::make_shared<XScriptProgram>(std::move(image)),
                         std::make_shared<XScriptEnv_base>())
        .run();
}

HugeVariant runText(const xstd::XString& source)
{
    XScript script(source);
    script.compile();
    return script.run(std::make_shared<XScriptEnv_base>());
}

/// The chain that an action fails with; an empty one if it does not.
xstd::XExceptionItems failureOf(const std::function<void()>& action)
{
    try {
        action();
    } catch (const xstd::XExceptionItems& failure) {
        return failure;
    }
    ADD_FAILURE() << "no failure";
    return {};
}

/// Writes an image: the header, then what build writes.
Image imageOf(const std::function<void(XScriptBuilder&)>& build, uint16_t maxStack = 8)
{
    Image image;
    XScriptBuilder builder(&image);
    builder.write(&maxStack, sizeof maxStack);
    build(builder);
    return image;
}

void writeInt(XScriptBuilder& builder, int64_t value)
{
    builder.writeInt(od_int{HugeInteger(value)});
}

TEST(Images, OfTwoBytesGiveNull)
{
    EXPECT_TRUE(runImage({0, 0}).isNull());
    const xstd::XExceptionItems failure = failureOf([] { runImage({0}); });
    EXPECT_EQ(failure.items()[0].type(), "scriptRuntime");
    EXPECT_EQ(failure.mess(), "Not a script");
    EXPECT_EQ(failure.extendInt("progSize"), 1);
}

TEST(Images, FailWhereTheyAreDamagedAndOnlyThere)
{
    struct Row {
        const char* mess;
        Image image;
        int64_t pos;
    };
    const Row rows[] = {
        {"Unrecognized operation instruction '50'", {0, 0, 50}, 3},
        {"Unrecognized operation instruction '255'", {0, 0, OP_PUSH_NULL, 255}, 4},
        {"This is not a OD_INT operand!", {0, 0, OP_POPTO, OD_BOOL, 1}, 3},
        {"This is not a OD_INT operand!", {0, 0, OP_POPTO, OD_INT, 200, 0, 1}, 6},
        {"This is not a OD_INT operand!", {0, 0, OP_POPTO}, 3},
        // Shorter than a header; more bytes than the one limb; a clear top bit; too many limbs.
        {"This is not a OD_DOU operand!", {0, 0, OP_NOT, OD_FLOAT, 3, 0, 1, 0, 0}, 9},
        {"This is not a OD_DOU operand!",
         {0, 0, OP_NOT, OD_FLOAT, 17, 0, 1, 0, 0, 0, 0, 0, 0, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9},
         23},
        {"This is not a OD_DOU operand!",
         {0, 0, OP_NOT, OD_FLOAT, 9, 0, 1, 0, 0, 0, 0, 0, 0, 0, 0x40},
         15},
        {"This is not a OD_IMAG operand!",
         {0, 0, OP_NOT, OD_IMAG, 9, 0, 0xff, 0xff, 0, 0, 0, 0, 0, 0, 0x80},
         15},
        {"This is not a OD_IMAG operand!", {0, 0, OP_NOT, OD_IMAG, 9, 0, 1}, 6},
        {"This is not a OD_MODINT operand!", {0, 0, OP_NOT, OD_MODINT, 1, 0, 0, 0}, 8},
        {"This is not a OD_MODINT operand!", // a slot below 0
         {0, 0, OP_NOT, OD_MODINT, 10, 0, 0xff, 0xff, 1, 0, 0, 0, 0, 0, 0, 0},
         8},
        {"This is not a OD_MODINT operand!", // a slot that holds no modulus
         {0, 0, OP_NOT, OD_MODINT, 10, 0, 0, 0, 1, 0, 0, 0, 0, 0, 0, 0},
         16},
        {"This is not a OD_OFFSET operand!", {0, 0, OP_JMP, OD_OFFSET, 2, 0}, 6},
        {"This is not a OD_STR operand!", {0, 0, OP_INVOKE, OD_AX, OD_INT}, 4},
        {"This is not a OD_STACKVAR operand!", {0, 0, OP_PUSH, OD_STACKVAR, 1}, 4},
        {"This is not a OD_CLOSURE operand!", {0, 0, OP_PUSH, OD_CLOSURE, 1, 0, 0, 0}, 8},
        {"This is not a OD_BOOL operand!", {0, 0, OP_NOT, OD_BOOL}, 4},
        {"Unrecognized operation instruction '13'", // into the middle of PUSH ax
         {0, 0, OP_PUSH, OD_AX, OP_JMP, OD_OFFSET, 3, 0, 0, 0},
         4},
        {"A call takes more arguments than there are", imageOf([](XScriptBuilder& b) {
             b.writeOp(OP_EXEC);
             b.writeReg(OD_AX);
             writeInt(b, 3);
         }),
         16},
        {"The frame has too many slots", {0, 0, OP_PUSH_NULL, OP_JMP, OD_OFFSET, 2, 0, 0, 0}, 3}};
    for (const Row& row : rows) {
        const xstd::XExceptionItems failure = failureOf([&] { runImage(row.image); });
        EXPECT_EQ(failure.mess(), row.mess);
        EXPECT_EQ(failure.extendInt("scriptRunner", "progPos"), row.pos) << row.mess;
        EXPECT_EQ(failure.items().back().mess(), "ScriptRuntime Error");
    }
    EXPECT_TRUE(runImage({0, 0, OP_RETURN, 77}).isNull());
    EXPECT_TRUE(runImage({0, 0, OP_NULL, 77}).isNull());
}

TEST(Images, RefuseReferencesOnConstants)
{
    const struct {
        const char* mess;
        Image image;
    } rows[] = {{"Can't asign a refvalue to a const var", {0, 0, OP_REF, OD_BOOL, 1, OD_AX}},
                {"Can't reference to a const var", {0, 0, OP_REF, OD_AX, OD_BOOL, 1}},
                {"This is not a refred value", {0, 0, OP_PUSH_REF, OD_BOOL, 1}}};
    for (const auto& row : rows) {
        const xstd::XExceptionItems failure = failureOf([&] { runImage(row.image); });
        EXPECT_EQ(failure.mess(), row.mess);
        EXPECT_EQ(failure.items()[0].type(), "scriptRunner");
        EXPECT_EQ(failure.extendText("operate"), "OP_PUSH_REF");
        EXPECT_EQ(failure.extendText("value"), "true");
        EXPECT_TRUE(failure.has("progPos"));
    }
}

TEST(Images, TakeOperandsOfAnyKindWhereTheyFit)
{
    // An offset is an integer, an unknown tag no value, AND and OR are truth values.
    EXPECT_EQ(runImage({0, 0, OP_MOV, OD_AX, OD_OFFSET, 7, 0, 0, 0}).toString(), "7");
    EXPECT_EQ(runImage({0, 0, OP_AND, OD_BOOL, 1, OD_BOOL, 0}).toString(), "false");
    EXPECT_EQ(runImage({0, 0, OP_OR, OD_BOOL, 1, OD_BOOL, 0}).toString(), "true");
    EXPECT_EQ(runImage({0, 0, OP_MOV, OD_AX, OD_CLOSUREVAR, 3, 0}).toString(), "");
    // A slot that is named comes into being with all below it.
    EXPECT_EQ(runImage({0, 0, OP_MOV, OD_STACK, 0x40, 0x9C, OD_BOOL, 1, OP_MOV, OD_AX, OD_STACK,
                        0x40, 0x9C})
                  .toString(),
              "true");
}

TEST(Images, OfRandomBytesNeverDoHarm)
{
    // Valid programs with some bytes changed reach far; plain noise covers the rest.
    const char* sources[] = {
        "var s = 0; for (var i = 0; i < 5; i += 1) { s += i } s",
        "var f = [n, g] { iif(n < 2, n, g(n - 1, &g) + g(n - 2, &g)) }; f(4, &f)",
        "var x = 1; { var p = 'abc'; &iif(1, &x, &x) && &iif(1, &p, &p) && 1; } x.left(1)",
        "var c = 1; var f = [] { c += 1; [] { c } }; f()() + max(c, 4)"};
    std::mt19937 random(20261122);
    for (int round = 0; round < 6000; ++round) {
        XScript script{xstd::XString(sources[round % 4])};
        script.compile();
        Image image = script.prog();
        const size_t changes = 1 + random() % 4;
        for (size_t i = 0; i < changes; ++i) {
            const uint32_t draw = random();
            // Low values are opcodes, tags and slots; they get further than noise does.
            image[2 + random() % (image.size() - 2)] =
                uint8_t(draw % 3 == 0 ? draw >> 8 : (draw >> 8) % 50);
        }
        if (random() % 8 == 0)
            image.resize(2 + random() % image.size());
        xstd::XStop::setHandler([] { xstd::XStop::request(); }); // endless loops end here
        try {
            runImage(image);
        } catch (const xstd::XExceptionItems&) {
        }
        xstd::XStop::setHandler({});
        xstd::XStop::clear();
    }
    EXPECT_FALSE(XScriptRunStack::anyOpen());
}

TEST(Failures, ArriveWithThePlaceInEveryFrame)
{
    try {
        runText("var f = [x] { 1 / x }; var g = [h] { h(0) }; g(&f)");
        FAIL();
    } catch (const XScriptValueFailure& failure) {
        ASSERT_EQ(failure.items().size(), 3u);
        EXPECT_EQ(failure.items()[0].mess(), "div with zero");
        EXPECT_EQ(failure.items()[0].type(), "scriptRunner");
        EXPECT_EQ(failure.items()[1].mess(), "ScriptRuntime Error");
        int64_t last = 0;
        for (const xstd::XExceptionItem& item : failure.items()) {
            EXPECT_EQ(item.type(), "scriptRunner");
            EXPECT_GT(item.extendInt("progPos"), last); // each caller stands further on here
            last = item.extendInt("progPos");
        }
    }
    EXPECT_FALSE(XScriptRunStack::anyOpen());
}

TEST(Failures, TellValuesFromTheEngine)
{
    EXPECT_THROW(runText("'a' % 1"), XScriptValueFailure);
    EXPECT_THROW(runText("var f = [g] { g(&g) }; f(&f)"), XScriptValueFailure);
    try {
        runImage({0, 0, 99});
        FAIL();
    } catch (const XScriptValueFailure&) {
        FAIL();
    } catch (const xstd::XExceptionItems&) {
    }
}

TEST(Failures, ThatAreStopsStayStops)
{
    for (const char* source : {"for (var i = 0; 1; i += 1) { }", "max(1)", "'a'.left(1)"}) {
        XScript script{xstd::XString(source)};
        script.compile();
        xstd::XStop::request();
        EXPECT_TRUE(xstd::XStop::isStop(failureOf([&] { script.run(nullptr); }))) << source;
        xstd::XStop::clear();
    }
}

TEST(Depth, OfClosureCallsIsFarAndBounded)
{
    const char* source = "var f = [n, g] { iif(n == 0, 0, g(n - 1, &g) + 1) };";
    EXPECT_EQ(runText(xstd::XString(source) + "f(5000, &f)").toString(), "5000");
    EXPECT_EQ(runText(xstd::XString(source) + "f(9000, &f)").toString(), "9000");
    const xstd::XExceptionItems failure =
        failureOf([&] { runText(xstd::XString(source) + "f(20000, &f)"); });
    EXPECT_EQ(failure.mess(), "Closure calls are nested too deep");
    EXPECT_EQ(failure.items().size(), xstd::XExceptionItems::maxItems);
    EXPECT_FALSE(XScriptRunStack::anyOpen());
}

TEST(Depth, OfLargeFramesFillsOneStretchOfSlotsAfterAnother)
{
    xstd::XString source = "var f = [n, g] { var v0 = n;";
    for (int i = 1; i < 60; ++i)
        source += xstd::format("var v%d = v%d;", i, i - 1);
    source += "iif(n == 0, 0, g(n - 1, &g) + v59 - n + 1) };";
    EXPECT_EQ(runText(source + "f(8000, &f)").toString(), "8000");
    EXPECT_EQ(runText(source + "f(8000, &f) + f(3000, &f)").toString(), "11000");
    EXPECT_FALSE(XScriptRunStack::anyOpen());
}

TEST(Depth, ThroughNativeFunctionsIsBoundedByTheMachineStack)
{
    XScriptEnv_base env;
    env.setVar("apply_test", HugeFunction([](HugeVariant* args, int argc) {
                   return argc == 0 ? HugeVariant() : args[0].exec(args, argc);
               }));
    const xstd::XExceptionItems failure =
        failureOf([] { runText("var f = [g] { apply_test(&g) + 1 }; f(&f)"); });
    EXPECT_EQ(failure.mess(), "Closure calls are nested too deep");
    env.removeVar("apply_test");
}

TEST(Depth, OfClosuresInsideClosuresIsBounded)
{
    const xstd::XExceptionItems failure = failureOf([] {
        runText("var f = [] { 1 }; for (var i = 0; i < 100000; i += 1) { f = [] { f }; } 0");
    });
    EXPECT_EQ(failure.mess(), "Closures are nested too deep");
    // Deep ones that no copy ever passes through end without recursion.
    XClosureHold chain;
    for (int i = 0; i < 300000; ++i) {
        auto* body = new XClosureBody;
        if (chain)
            body->closureVars.push_back(HugeVariant::make<XVarClosure>(std::move(chain)));
        chain = XClosureHold(body);
    }
    chain = XClosureHold();
}

TEST(Frames, KeepTheirSlotsWithAnyCountOfArguments)
{
    xstd::XString call = "var a = 1; var f = [r] { var t = 5; r += 6; t }; var u = f(&a";
    for (int i = 0; i < 3000; ++i)
        call += ", " + std::to_string(i + 40);
    // The surplus arguments stand where the body's own variables would.
    EXPECT_EQ(runText(call + "); a * 100 + u").toString(), "740");
}

TEST(Frames, LeaveNoReferenceBehindInAnyHandle)
{
    // Binding a lower slot to an upper one: the lower takes the value when the upper goes.
    Image image = imageOf([](XScriptBuilder& b) {
        b.writeOp(OP_PUSH_NULL);
        b.writeOp(OP_PUSH);
        b.writeStr(od_str{"gone"});
        b.writeOp(OP_REF);
        b.writeStack(0);
        b.writeStack(1);
        b.writeOp(OP_POP);
        b.writeOp(OP_PUSH);
        b.writeStr(od_str{"other"});
        b.writeOp(OP_MOV);
        b.writeReg(OD_AX);
        b.writeStack(0);
    });
    EXPECT_EQ(runImage(image).toString(), "gone");
    // A variable of the environment outlives every run: it takes a copy at once.
    XScriptEnv_base env;
    env.setVar("bound_test", HugeVariant(1));
    image = imageOf([](XScriptBuilder& b) {
        b.writeOp(OP_PUSH);
        b.writeStr(od_str{"copied"});
        b.writeOp(OP_REF);
        b.writeExtend(od_extend{0, 0, 0, "bound_test"});
        b.writeStack(0);
    });
    runImage(image);
    EXPECT_FALSE(env.getVar("bound_test").isRef());
    EXPECT_EQ(env.getVar("bound_test").toString(), "copied");
    env.removeVar("bound_test");
}

TEST(Closures, OutliveTheirScript)
{
    HugeVariant closure;
    {
        XScript script("var c = 10; [x] { c += x; max(c, 0) }");
        script.compile();
        closure = script.run(std::make_shared<XScriptEnv_base>());
    }
    EXPECT_TRUE(closure.isClosure());
    EXPECT_EQ(closure.typeId(), 9);
    HugeVariant arg(5);
    EXPECT_EQ(closure.exec(&arg, 1).toString(), "15");
    EXPECT_TRUE(arg.isNull()); // arguments are moved
    HugeVariant copy = closure;
    HugeVariant one(1);
    EXPECT_EQ(copy.exec(&one, 1).toString(), "16");
    EXPECT_EQ(closure.exec(nullptr, 0).toString(), "15");
}

TEST(Closures, TakeReferencesToHandlesOutside)
{
    const HugeVariant closure = runText("[x] { x += 1; &x }");
    HugeVariant outside(4);
    HugeVariant arg;
    arg.setRef(outside);
    const HugeVariant result = closure.exec(&arg, 1);
    EXPECT_EQ(outside.toString(), "5");
    EXPECT_FALSE(result.isRef());
    EXPECT_EQ(result.toString(), "5");
}

TEST(Closures, PrintTheirPlace)
{
    const xstd::XString text = runText("var a = 1; var b = 'x'; [p, q] { a + b + p }").toString();
    EXPECT_EQ(text.substr(0, 6), "prog: ");
    EXPECT_NE(text.find(", maxStack: "), xstd::XString::npos);
    EXPECT_NE(text.find(", env_: "), xstd::XString::npos);
    EXPECT_NE(text.find(", params: 2, closureVars: [1, x]"), xstd::XString::npos) << text;
}

TEST(Environment, LooksNamesUpAsWrittenThenInLowerCase)
{
    XScriptEnv_base env;
    env.setVar("printLine", HugeVariant("upper"));
    EXPECT_EQ(runText("printLine").toString(), "upper");
    EXPECT_EQ(runText("PrintLine.typeName").toString(),
              "functinal: HugeVariant(HugeVariant* _args, int argc)");
    EXPECT_EQ(env.removeVar("printLine"), 1u);
    EXPECT_EQ(env.removeVar("printLine"), 0u);
    EXPECT_TRUE(env.getVar("printLine").isNull());
}

TEST(Environment, IsWrittenThroughByScripts)
{
    XScriptEnv_base env;
    env.setVar("shared_test", HugeVariant(1));
    runText("shared_test += 5; var r = shared_test; r = 9");
    EXPECT_EQ(env.getVar("shared_test").toString(), "6");
    env.setVar("shared_test", HugeVariant(2));
    EXPECT_EQ(runText("Shared_Test").toString(), "2");
    env.removeVar("shared_test");
}

TEST(Environment, KeepsWhatARunRefersTo)
{
    XScriptEnv_base env;
    env.setVar("away_test", HugeFunction([&env](HugeVariant*, int) {
                   env.removeVar("away_test");
                   env.removeVar("text_test");
                   return HugeVariant(1);
               }));
    env.setVar("text_test", HugeVariant("a text that is long enough to be on the heap"));
    const Image image = imageOf([](XScriptBuilder& b) {
        b.writeOp(OP_PUSH_REF);
        b.writeExtend(od_extend{0, 0, 0, "text_test"});
        b.writeOp(OP_EXEC);
        b.writeExtend(od_extend{0, 0, 0, "away_test"});
        writeInt(b, 0);
        b.writeOp(OP_MOV);
        b.writeReg(OD_AX);
        b.writeStack(0);
    });
    EXPECT_EQ(runImage(image).toString(), "a text that is long enough to be on the heap");
    EXPECT_EQ(runText("text_test").toString(), "text_test");
}

} // namespace
} // namespace huge
