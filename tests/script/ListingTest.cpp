#include "script/XScript.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using namespace huge;
using Lines = std::vector<std::string>;

Lines listed(XScriptBuilder& builder, const XDebugInfo* debug = nullptr)
{
    Lines lines;
    builder.decode(debug, [&](const xstd::XString& line) { lines.push_back(line); });
    return lines;
}

Lines listed(const char* source, bool withDebug)
{
    XScript script{xstd::XString(source)};
    XDebugInfo debug;
    debug.lines = xstd::XString(source).split('\n');
    script.compile(withDebug ? &debug : nullptr);
    std::vector<uint8_t> image = script.prog();
    XScriptBuilder builder(&image);
    return listed(builder, withDebug ? &debug : nullptr);
}

/// An instruction's operands, one of each kind that the table of lines tells apart.
void writeOperands(XScriptBuilder& builder, xop_type op)
{
    const auto count = [&] { builder.writeInt(od_int{HugeInteger(2)}); };
    if (op == OP_JMP || op == OP_CLOSURE_BEGIN) {
        builder.writeOffset(1);
        return;
    }
    if (op == OP_POPTO) {
        count();
        return;
    }
    for (int i = 0; i < xopOperands(op); ++i) {
        if (i == 1 && (op == OP_JMP_TRUE || op == OP_JMP_FALSE))
            builder.writeOffset(7);
        else if (i == 1 && op == OP_INVOKE)
            builder.writeStr(od_str{"len"});
        else if (i > 0 && (op == OP_INVOKE || op == OP_EXEC))
            count();
        else
            builder.writeReg(OD_AX);
    }
}

// A program of every instruction, in the order of their numbers.
TEST(Listing, HasALineForEveryInstruction)
{
    std::vector<uint8_t> image{5, 1};
    XScriptBuilder builder(&image);
    builder.seekEnd();
    Lines expected{"MAXSTACK\t261"};
    for (int op = OP_MOV; op <= OP_RETURN; ++op) {
        const auto type = static_cast<xop_type>(op);
        const xstd::XString start = xstd::format("%5d %-12s", builder.pos(), xopName(type));
        builder.writeOp(type);
        writeOperands(builder, type);
        const std::string one = start + " ax{  }";
        switch (op) {
        case OP_PUSH_NULL:
            expected.push_back(start + "\t{stacksize: 0 -> 1");
            break;
        case OP_PUSH:
            expected.push_back(one + "\t{ -> stack[1]}");
            break;
        case OP_PUSH_REF:
            expected.push_back(one + "\t{ -> stack[2]");
            break;
        case OP_POP:
            expected.push_back(std::to_string(builder.pos() - 1) +
                               " POP         \t{stacksize: 3 -> 2}");
            break;
        case OP_POPTO:
            expected.push_back(start + " int{ 2 }\t{stacksize: 2 -> 2}");
            break;
        case OP_EXEC:
            expected.push_back(one + ", param:int{ 2 }");
            break;
        case OP_INVOKE:
            expected.push_back(one + ", name:string{ \"len\" }, param:int{ 2 }");
            break;
        case OP_NOT:
        case OP_NEG:
        case OP_BIT_NOT:
            expected.push_back(one);
            break;
        case OP_JMP:
            expected.push_back(start + " offset{ 1 }");
            break;
        case OP_JMP_TRUE:
        case OP_JMP_FALSE:
            expected.push_back(one + ", offset{ 7 }");
            break;
        case OP_CLOSURE_BEGIN:
            expected.push_back(start + " params: 1");
            break;
        case OP_CLOSURE_END:
        case OP_RETURN:
            expected.push_back(start);
            break;
        default:
            expected.push_back(one + ", ax{  }");
        }
    }
    EXPECT_EQ(listed(builder), expected);

    Lines names;
    builder.decodeTo([&](xop_type op, const std::vector<prog_od>& operands) {
        EXPECT_EQ(operands.size(), static_cast<size_t>(xopOperands(op)));
        names.push_back(xopName(op));
    });
    EXPECT_EQ(names.size(), static_cast<size_t>(OP_RETURN));
    EXPECT_EQ(names.front(), "MOV");
}

TEST(Listing, ShowsOperandsByTheirKind)
{
    const std::vector<std::pair<std::function<void(XScriptBuilder&)>, const char*>> cases = {
        {[](XScriptBuilder& to) { to.writeBool(od_bool{true}); }, "bool{ true }"},
        {[](XScriptBuilder& to) { to.writeInt(od_int{HugeInteger(0)}); }, "int{ 0 }"},
        {[](XScriptBuilder& to) {
             to.writeModint(od_modint{0, HugeInteger(5)});
         },
         "modint{ 5(mod stack[0]) }(mod stack[0])"},
        {[](XScriptBuilder& to) { to.writeOffset(57); }, "offset{ 57 }"},
        {[](XScriptBuilder& to) { to.writeFloat(od_float{HugeFloat(0.5)}); }, "float{ 0.5 }"},
        {[](XScriptBuilder& to) { to.writeImag(od_imag{HugeFloat(1.5)}); }, "imag{ 1.5 }"},
        {[](XScriptBuilder& to) { to.writeStr(od_str{"a\n\"b\""}); },
         "string{ \"a\\n\\\"b\\\"\" }"},
        {[](XScriptBuilder& to) {
             to.writeExtend(od_extend{0, 3, 4, "name"});
         },
         "extend{ name{0, 0} }"},
        {[](XScriptBuilder& to) { to.writeStackVar(3); }, "stackvar[ 3 ]"},
        {[](XScriptBuilder& to) { to.writeStack(4); }, "stack[ 4 ]"},
        {[](XScriptBuilder& to) { to.writeClosureVar(5); }, "closurevar{ 5 }"},
        {[](XScriptBuilder& to) {
             to.writeClosure(od_closure{9, 2, 1, {7, 8}});
         },
         "closure{ entry:9{maxStack:2, paramCount:1, closureVarCount:2, closureVars:[7, 8]} }"},
        {[](XScriptBuilder& to) { to.writeReg(OD_AX); }, "ax{  }"},
    };
    for (const auto& [write, text] : cases) {
        std::vector<uint8_t> image;
        XScriptBuilder builder(&image);
        write(builder);
        builder.setPos(0);
        EXPECT_EQ(builder.readOperand().toText(), text);
    }
}

TEST(Listing, PutsSourceLinesAndNamesOfVariablesWhereTheyAreKnown)
{
    const std::string source = "var x = 1;\nx + 2";
    const Lines lines = listed(source.c_str(), true);
    const auto has = [&](const std::string& part) {
        return std::any_of(lines.begin(), lines.end(),
                           [&](const std::string& line) { return line.find(part) == 0; });
    };
    EXPECT_TRUE(has("\ncode: var x = 1;"));
    EXPECT_TRUE(has("----------------")); // ten bytes of text and six
    EXPECT_TRUE(has("\ncode: x + 2"));
    const auto ends = [&](const std::string& text) {
        return std::any_of(lines.begin(), lines.end(), [&](const std::string& line) {
            return line.find(text) != std::string::npos;
        });
    };
    EXPECT_TRUE(ends("ADD          x{ stackvar[ 0 ] }, int{ 2 }"));
    for (const std::string& line : listed(source.c_str(), false))
        EXPECT_EQ(line.find("code:"), std::string::npos) << line;
}

// A body counts its own stack, from the number of its parameters.
TEST(Listing, CountsTheStackOfAClosureFromItsParameters)
{
    const Lines lines = listed("var f = [a, b] { var c = a; c }", false);
    bool inside = false;
    bool seen = false;
    for (const std::string& line : lines) {
        inside = (inside || line.find("CLOSURE_BEGIN params: 2") != std::string::npos) &&
                 line.find("CLOSURE_END") == std::string::npos;
        seen = seen || (inside && line.find("-> stack[2]") != std::string::npos);
    }
    EXPECT_TRUE(seen);
}

TEST(Listing, RefusesWhatHasNoHeaderAndEndsOnAnyBytes)
{
    std::vector<uint8_t> image{0};
    XScriptBuilder broken(&image);
    try {
        broken.decode(nullptr, [](const xstd::XString&) {});
        FAIL() << "one byte is no program";
    } catch (const xstd::XExceptionItems& failure) {
        EXPECT_NE(std::string(failure.what()).find("Not a script, program is too small"),
                  std::string::npos);
        EXPECT_NE(std::string(failure.what()).find("progSize"), std::string::npos);
    }
    EXPECT_ANY_THROW(broken.decodeTo([](xop_type, const std::vector<prog_od>&) {}));

    std::vector<uint8_t> empty{0, 0};
    XScriptBuilder builder(&empty);
    EXPECT_EQ(listed(builder), Lines{"MAXSTACK\t0"});

    // Ends of closures that never began, unknown opcodes and tags.
    std::vector<uint8_t> odd{0, 0, OP_CLOSURE_END, OP_CLOSURE_END, 200, OP_POP, OP_NOT, 99};
    XScriptBuilder reader(&odd);
    EXPECT_EQ(listed(reader).size(), 5u);
}

} // namespace
