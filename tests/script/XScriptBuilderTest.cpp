#include "script/XScriptBuilder.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

namespace {

using namespace huge;
using Bytes = std::vector<uint8_t>;

XCStoken token(XTokenKind kind, const char* text = "", uint16_t idx = 0)
{
    XCStoken result(kind, idx);
    result.text = text;
    return result;
}

/// The bytes that an operation on an empty image writes.
Bytes written(const std::function<void(XScriptBuilder&)>& operation)
{
    Bytes image;
    XScriptBuilder builder(&image);
    operation(builder);
    EXPECT_EQ(static_cast<size_t>(builder.pos()), image.size());
    EXPECT_EQ(static_cast<size_t>(builder.size()), image.size());
    return image;
}

struct OperandCase {
    const char* what;
    std::function<void(XScriptBuilder&)> write;
    Bytes bytes;
    xod_type tag;
    int64_t scalar;
};

std::vector<OperandCase> operandCases()
{
    return {
        {"bool", [](auto& b) { b.writeBool({true}); }, {1, 1}, OD_BOOL, 1},
        {"zero",
         [](auto& b) { b.writeInt({HugeInteger(0)}); },
         {2, 8, 0, 1, 0, 0, 0, 0, 0, 0, 0},
         OD_INT,
         0},
        {"one byte",
         [](auto& b) { b.writeInt({HugeInteger(255)}); },
         {2, 9, 0, 1, 0, 0, 0, 0, 0, 0, 0, 255},
         OD_INT,
         255},
        {"two bytes",
         [](auto& b) { b.writeInt({HugeInteger(256)}); },
         {2, 10, 0, 1, 0, 0, 0, 0, 0, 0, 0, 0, 1},
         OD_INT,
         256},
        {"negative",
         [](auto& b) { b.writeInt({HugeInteger(-2)}); },
         {2, 9, 0, 1, 0, 1, 0, 0, 0, 0, 0, 2},
         OD_INT,
         -2},
        {"spare limbs",
         [](auto& b) { b.writeInt({HugeInteger(7, 3)}); },
         {2, 9, 0, 3, 0, 0, 0, 0, 0, 0, 0, 7},
         OD_INT,
         7},
        {"second limb",
         [](auto& b) { b.writeInt({HugeInteger(1, 2) << 64}); },
         {2, 17, 0, 2, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1},
         OD_INT,
         0},
        {"modint",
         [](auto& b) {
             b.writeModint({3, HugeInteger(5)});
         },
         {3, 11, 0, 3, 0, 1, 0, 0, 0, 0, 0, 0, 0, 5},
         OD_MODINT,
         3},
        {"float of one bit", // 1: header, and the top byte of its mantissa
         [](auto& b) { b.writeFloat({HugeFloat(1)}); },
         {5, 9, 0, 1, 0, 0, 0, 0, 0, 0, 0, 0x80},
         OD_FLOAT,
         1},
        {"float with an exponent",
         [](auto& b) { b.writeFloat({HugeFloat(-1028.25, 3)}); },
         {5, 10, 0, 3, 0, 1, 0, 10, 0, 0, 0, 0x88, 0x80},
         OD_FLOAT,
         -1028},
        {"float of two limbs",
         [](auto& b) { b.writeFloat({HugeFloat(HugeInteger(1, 2) << 64) + HugeFloat(1)}); },
         {5, 17, 0, 2, 0, 0, 0, 64, 0, 0, 0, 0x80, 0, 0, 0, 0, 0, 0, 0, 0x80},
         OD_FLOAT,
         1},
        {"float zero",
         [](auto& b) { b.writeFloat({HugeFloat(0, 2)}); },
         {5, 8, 0, 2, 0, 0, 0, 0, 0, 0, 0},
         OD_FLOAT,
         0},
        {"imag",
         [](auto& b) { b.writeImag({HugeFloat(5)}); },
         {6, 9, 0, 1, 0, 0, 0, 2, 0, 0, 0, 0xa0},
         OD_IMAG,
         5},
        {"offset",
         [](auto& b) { b.writeOffset(0x01020304); },
         {4, 4, 3, 2, 1},
         OD_OFFSET,
         0x01020304},
        {"string", [](auto& b) { b.writeStr({"12"}); }, {7, 2, 0, '1', '2'}, OD_STR, 12},
        {"extend",
         [](auto& b) {
             b.writeExtend({0, 4, 3, "Sum"});
         },
         {8, 6, 0, 1, 3, 0, 'S', 'u', 'm'},
         OD_EXTEND,
         0},
        {"stackvar", [](auto& b) { b.writeStackVar(258); }, {9, 2, 1}, OD_STACKVAR, 258},
        {"stack", [](auto& b) { b.writeStack(1); }, {10, 1, 0}, OD_STACK, 1},
        {"closurevar", [](auto& b) { b.writeClosureVar(2); }, {11, 2, 0}, OD_CLOSUREVAR, 2},
        {"closure without captures",
         [](auto& b) {
             b.writeClosure({9, 2, 1, {}});
         },
         {12, 9, 0, 0, 0, 2, 0, 1, 0, 0, 0},
         OD_CLOSURE,
         9},
        {"closure",
         [](auto& b) {
             b.writeClosure({9, 2, 1, {7, 258}});
         },
         {12, 9, 0, 0, 0, 2, 0, 1, 0, 2, 0, 7, 0, 2, 1},
         OD_CLOSURE,
         9},
        {"ax", [](auto& b) { b.writeReg(OD_AX); }, {13}, OD_AX, 0},
    };
}

TEST(Operands, HaveTheirBytes)
{
    for (const OperandCase& row : operandCases())
        EXPECT_EQ(written(row.write), row.bytes) << row.what;
}

TEST(Operands, ReadBackFromTheirBytes)
{
    for (const OperandCase& row : operandCases()) {
        Bytes image = row.bytes;
        XScriptBuilder builder(&image);
        const prog_od od = builder.readOperand();
        EXPECT_EQ(od.type, row.tag) << row.what;
        EXPECT_EQ(od.asInt64(), row.scalar) << row.what;
        EXPECT_EQ(static_cast<size_t>(builder.pos()), image.size()) << row.what;
    }
}

TEST(Operands, CutOffAnywhereFailAndLeaveTheCursor)
{
    for (const OperandCase& row : operandCases()) {
        for (size_t length = 1; length < row.bytes.size(); ++length) {
            Bytes image(row.bytes.begin(), row.bytes.begin() + static_cast<ptrdiff_t>(length));
            XScriptBuilder builder(&image);
            EXPECT_THROW(builder.readOperand(), xstd::XExceptionItems) << row.what << length;
            EXPECT_EQ(builder.pos(), 0);
        }
    }
}

TEST(Operands, GiveTheirPayloadInMemory)
{
    for (const OperandCase& row : operandCases()) {
        Bytes image = row.bytes;
        prog_od copy;
        copy.copyValue(XScriptBuilder(&image).readOperand());
        Bytes payload{row.bytes[0]};
        copy.data(payload);
        EXPECT_EQ(payload, row.bytes) << row.what;
    }
}

TEST(Operands, OfATagOutsideTheTableAreRefused)
{
    prog_od strange;
    strange.type = static_cast<xod_type>(14);
    Bytes bytes;
    try {
        strange.data(bytes);
        FAIL() << "no failure";
    } catch (const xstd::XExceptionItems& failure) {
        EXPECT_EQ(failure.mess(), "Unknow prog_od data type");
        EXPECT_EQ(failure.extendInt("scriptBuilder", "prog_od_data"), 14);
    }
    EXPECT_THROW(prog_od().copyValue(strange), xstd::XExceptionItems);
    Bytes image{14, 0, 0};
    XScriptBuilder builder(&image);
    EXPECT_EQ(builder.readOperand().type, OD_NULL);
    EXPECT_EQ(builder.pos(), 0);
}

TEST(Operands, TruthFollowsTheScalarAndTheTextsLength)
{
    prog_od od;
    EXPECT_FALSE(od.asBool());
    od.value = od_str{"0"};
    EXPECT_TRUE(od.asBool());
    EXPECT_EQ(od.asDouble(), 0.0);
    od.value = od_str{"1.5"};
    EXPECT_EQ(od.asDouble(), 1.5);
    od.value = od_int{HugeInteger(1, 2) << 64};
    EXPECT_TRUE(od.asBool());
    EXPECT_EQ(od.asDouble(), 18446744073709551616.0);
    od.value = od_float{HugeFloat(0.25)};
    EXPECT_TRUE(od.asBool());
    EXPECT_EQ(od.asDouble(), 0.25);
    od.value = od_imag{HugeFloat(0)};
    EXPECT_FALSE(od.asBool());
}

// --- operand by token ---

struct TokenCase {
    XCStoken token;
    Bytes bytes;
};

TEST(Tokens, AreWrittenByTheirKind)
{
    XCStoken residue = token(TK_MODINT, "0x10");
    residue.modIdx = 2;
    XCStoken name = token(TK_EXTEND, "Ab");
    XCStoken closure = token(TK_CLOSURE);
    closure.data = {int64_t{20}, int64_t{3}, int64_t{2}, int64_t{1}, int64_t{5}};
    const std::vector<TokenCase> cases = {
        {token(TK_AX), {13}},
        {token(TK_STACKVAR, "x", 1), {9, 1, 0}},
        {token(TK_STACK, "", 2), {10, 2, 0}},
        {token(TK_CLOSUREVAR, "x", 3), {11, 3, 0}},
        {token(TK_BOOL, "true"), {1, 1}},
        {token(TK_BOOL, "1"), {1, 1}},
        {token(TK_BOOL, "false"), {1, 0}},
        {token(TK_INT, "0b11"), {2, 9, 0, 1, 0, 0, 0, 0, 0, 0, 0, 3}},
        {token(TK_INT, "0o17"), {2, 9, 0, 1, 0, 0, 0, 0, 0, 0, 0, 15}},
        {residue, {3, 11, 0, 2, 0, 1, 0, 0, 0, 0, 0, 0, 0, 16}},
        {token(TK_FLOAT, "1.5..2"), {5, 9, 0, 2, 0, 0, 0, 0, 0, 0, 0, 0xc0}},
        {token(TK_IMAG, "1.5i"), {6, 9, 0, 1, 0, 0, 0, 0, 0, 0, 0, 0xc0}},
        {token(TK_STRING, "a"), {7, 1, 0, 'a'}},
        {name, {8, 5, 0, 1, 2, 0, 'A', 'b'}},
        {closure, {12, 20, 0, 0, 0, 3, 0, 2, 0, 1, 0, 5, 0}},
    };
    for (const TokenCase& row : cases)
        EXPECT_EQ(written([&](auto& b) { b.writeTok(nullptr, row.token); }), row.bytes)
            << row.token.toString(true);
}

TEST(Tokens, OfOtherKindsAreNoOperands)
{
    for (const XTokenKind kind : {TK_NULL, TK_OPERATOR, TK_LABEL, TK_OFFSET}) {
        Bytes image{0, 0};
        XScriptBuilder builder(&image);
        builder.seekEnd();
        try {
            builder.writeTok(nullptr, token(kind, "x"));
            FAIL() << "no failure";
        } catch (const xstd::XExceptionItems& failure) {
            EXPECT_EQ(failure.mess(), "Unrecognized token!");
            EXPECT_EQ(failure.extendInt("scriptBuilder", "progPos"), 2);
            EXPECT_EQ(failure.extendText("token"), token(kind, "x").toString(true));
        }
    }
}

// --- limits ---

TEST(Lengths, OfStringsEndAt65535)
{
    const Bytes longest = written([](auto& b) { b.writeStr({xstd::XString(65535, 'x')}); });
    EXPECT_EQ(longest.size(), 65538u);
    EXPECT_EQ(longest[1], 255);
    EXPECT_EQ(longest[2], 255);
    Bytes image;
    XScriptBuilder builder(&image);
    try {
        builder.writeStr({xstd::XString(65536, 'x')});
        FAIL() << "no failure";
    } catch (const xstd::XExceptionItems& failure) {
        EXPECT_EQ(failure.mess(),
                  "The string literal is too long, at most 65535 bytes are possible");
    }
    EXPECT_TRUE(image.empty());
}

TEST(Lengths, OfNamesLeaveRoomForTheirForm)
{
    EXPECT_NO_THROW(written([](auto& b) { b.writeExtend({0, 0, 0, xstd::XString(65532, 'x')}); }));
    Bytes image;
    XScriptBuilder builder(&image);
    for (const size_t length : {65533u, 65536u})
        EXPECT_THROW(builder.writeExtend({0, 0, 0, xstd::XString(length, 'x')}),
                     xstd::XExceptionItems);
}

TEST(Lengths, OfIntegersLeaveRoomForTheHeader)
{
    const auto ofBytes = [](size_t bytes) {
        HugeInteger value;
        value.fromBytes_(Bytes(bytes, 0xff).data(), bytes);
        return value;
    };
    EXPECT_EQ(written([&](auto& b) { b.writeInt({ofBytes(65527)}); }).size(), 65538u);
    EXPECT_EQ(written([&](auto& b) { b.writeModint({0, ofBytes(65525)}); }).size(), 65538u);
    Bytes image;
    XScriptBuilder builder(&image);
    EXPECT_THROW(builder.writeInt({ofBytes(65528)}), xstd::XExceptionItems);
    EXPECT_THROW(builder.writeModint({0, ofBytes(65526)}), xstd::XExceptionItems);
}

// --- reading failures ---

struct WrongTagCase {
    std::function<void(XScriptBuilder&)> read;
    const char* name;
    int64_t dataSize;
};

TEST(WrongTags, FailWithTheNameOfWhatWasExpected)
{
    const std::vector<WrongTagCase> cases = {
        {[](auto& b) { b.readBool(); }, "BOOL", 1},
        {[](auto& b) { b.readInt(); }, "INT", 10},
        {[](auto& b) { b.readModint(); }, "MODINT", 12},
        {[](auto& b) { b.readOffset(); }, "OFFSET", 4},
        {[](auto& b) { b.readStr(); }, "STR", 2},
        {[](auto& b) { b.readExtend(); }, "EXTEND", 2},
        {[](auto& b) { b.readStackVar(); }, "STACKVAR", 2},
        {[](auto& b) { b.readStack(); }, "STACK", 2},
        {[](auto& b) { b.readClosureVar(); }, "CLOSUREVAR", 2},
        {[](auto& b) { b.readClosure(); }, "CLOSURE", 10},
        {[](auto& b) { b.readReg(); }, "AX", 0},
        {[](auto& b) { b.writeReg(OD_STACK); }, "AX", 0},
    };
    for (const WrongTagCase& row : cases) {
        Bytes image{0, 0, 0, 0, 0, 0, 0, 0};
        XScriptBuilder builder(&image);
        builder.setPos(3);
        try {
            row.read(builder);
            FAIL() << row.name;
        } catch (const xstd::XExceptionItems& failure) {
            EXPECT_EQ(failure.mess(), "This is not a OD_" + std::string(row.name) + " operand!");
            EXPECT_EQ(failure.extendInt("scriptBuilder", "progPos"), 3) << row.name;
            EXPECT_EQ(failure.extendInt("scriptBuilder", "dataSize"), row.dataSize) << row.name;
        }
    }
}

TEST(Extends, OfAnUnknownFormatAreRefused)
{
    Bytes image{8, 2, 0, 9, 0xab};
    XScriptBuilder builder(&image);
    try {
        builder.readExtend();
        FAIL() << "no failure";
    } catch (const xstd::XExceptionItems& failure) {
        EXPECT_EQ(failure.mess(), "Unrecognized external identification!");
        EXPECT_EQ(failure.extendInt("scriptBuilder", "extendSize"), 2);
        EXPECT_EQ(failure.extendText("extendData"), "09ab");
    }
}

// --- opcodes ---

struct OpCase {
    const char* text;
    uint8_t op;
};

TEST(Opcodes, FollowTheOperatorsText)
{
    const OpCase cases[] = {
        {"=", 1},   {"+", 3},   {"-", 4},   {"*", 5},    {"/", 6},    {"**", 7},   {"^", 7},
        {"%", 8},   {"_!", 17}, {"_-", 18}, {"==", 19},  {"!=", 20},  {"<", 21},   {">", 22},
        {"<=", 23}, {">=", 24}, {"|", 27},  {"&", 28},   {"_~", 29},  {"^|", 30},  {">>", 31},
        {"<<", 32}, {"+=", 33}, {"-=", 34}, {"*=", 35},  {"/=", 36},  {"**=", 37}, {"^=", 37},
        {"%=", 38}, {"|=", 39}, {"&=", 40}, {"^|=", 41}, {">>=", 42}, {"<<=", 43},
    };
    for (const OpCase& row : cases)
        EXPECT_EQ(written([&](auto& b) { b.writeOp(xstd::XString(row.text)); }), Bytes{row.op})
            << row.text;
}

TEST(Opcodes, AreRefusedForOtherTexts)
{
    for (const char* text : {"", "&&", "||", "_+", "{", "!", "x"}) {
        Bytes image;
        XScriptBuilder builder(&image);
        try {
            builder.writeOp(xstd::XString(text));
            FAIL() << text;
        } catch (const xstd::XExceptionItems& failure) {
            EXPECT_EQ(failure.mess(), "This is not a operand!");
            EXPECT_EQ(failure.extendText("scriptBuilder", "token"), text);
            EXPECT_TRUE(failure.has("progPos"));
        }
    }
}

TEST(Opcodes, HaveNamesButForTwo)
{
    EXPECT_STREQ(xopName(0), "NULL");
    EXPECT_STREQ(xopName(16), "INVOKE");
    EXPECT_STREQ(xopName(29), "BIT_NOT");
    EXPECT_STREQ(xopName(30), "UNKNOWN");
    EXPECT_STREQ(xopName(41), "UNKNOWN");
    EXPECT_STREQ(xopName(43), "BITSHL_TO");
    EXPECT_STREQ(xopName(47), "CLOSURE_BEGIN");
    EXPECT_STREQ(xopName(49), "RETURN");
    EXPECT_STREQ(xopName(50), "UNKNOWN");
    EXPECT_STREQ(xodName(13), "ax");
    EXPECT_STREQ(xodName(14), "unknown");
}

TEST(Opcodes, ReadToTheEnd)
{
    Bytes image{0, 0, 49};
    XScriptBuilder builder(&image);
    EXPECT_EQ(builder.readOp(2), OP_RETURN);
    EXPECT_EQ(builder.readOp(), OP_NULL);
    EXPECT_EQ(builder.pos(), 3);
}

// --- the cursor ---

TEST(Cursor, StandsBehindAPatchAndTheSizeStays)
{
    Bytes image;
    XScriptBuilder builder(&image);
    builder.writeOp(OP_JMP);
    builder.writeOffset(0);
    builder.writeOp(OP_RETURN);
    builder.writeOffset(6, 1);
    EXPECT_EQ(builder.pos(), 6);
    EXPECT_EQ(builder.size(), 7);
    builder.seekEnd();
    EXPECT_EQ(builder.pos(), 7);
    EXPECT_EQ(image, (Bytes{44, 4, 6, 0, 0, 0, 49}));
}

TEST(Cursor, GrowsTheImageWithZeros)
{
    Bytes image;
    XScriptBuilder builder(&image);
    builder.writeOp(OP_RETURN, 3);
    EXPECT_EQ(image, (Bytes{0, 0, 0, 49}));
    EXPECT_EQ(builder.size(), 4);
}

TEST(Cursor, StopsAt2GiB)
{
    Bytes image;
    XScriptBuilder builder(&image);
    try {
        builder.writeOffset(0, INT32_MAX - 4);
        FAIL() << "no failure";
    } catch (const xstd::XExceptionItems& failure) {
        EXPECT_EQ(failure.mess(), "The program is too long");
    }
    EXPECT_TRUE(image.empty());
}

// --- names of the environment ---

TEST(ExtendData, KeepsTheNameAsWrittenAndInLowerCase)
{
    const XScriptExtendData data = XScriptExtendData::fromName("PrintLine");
    EXPECT_EQ(data.format(), 1);
    EXPECT_EQ(data.name(), "PrintLine");
    EXPECT_EQ(data.lowerName(), "printline");
    EXPECT_EQ(data.id(), -1);
    EXPECT_EQ(XScriptExtendData(data.bytes()).name(), "PrintLine");
}

TEST(ExtendData, IsBuiltAndReadFieldByField)
{
    XScriptExtendData data;
    data.write8(5);
    data.write32(0xfffffffe);
    data.write16(0x1234);
    data.write64(0x0102030405060708);
    data.writeString("ab");
    EXPECT_EQ(data.bytes(), (Bytes{5, 0xfe, 0xff, 0xff, 0xff, 0x34, 0x12, 8, 7, 6, 5, 4, 3, 2, 1, 2,
                                   0, 'a', 'b'}));
    EXPECT_EQ(data.id(), -2);
    XScriptExtendData reader(data.bytes());
    EXPECT_EQ(reader.read8(), 5);
    EXPECT_EQ(reader.read32(), 0xfffffffe);
    EXPECT_EQ(reader.read16(), 0x1234);
    EXPECT_EQ(reader.read64(), 0x0102030405060708u);
    EXPECT_EQ(reader.readString(), "ab");
    EXPECT_EQ(reader.read16(5), 0x1234);
    EXPECT_THROW(reader.read8(19), xstd::XExceptionItems);
    EXPECT_THROW(reader.readString(18), xstd::XExceptionItems);
}

TEST(ExtendData, OfDamagedBytesHasNoNameAndNoId)
{
    EXPECT_EQ(XScriptExtendData(Bytes{}).format(), 0);
    EXPECT_EQ(XScriptExtendData(Bytes{1, 3, 0, 'a'}).name(), "");
    EXPECT_EQ(XScriptExtendData(Bytes{1, 3}).name(), "");
    EXPECT_EQ(XScriptExtendData(Bytes{5, 1, 0, 0}).id(), -1);
}

// --- debug information ---

TEST(DebugInfo, NotesLinesWhereTheyChangeAndTokensWithText)
{
    Bytes image;
    XScriptBuilder builder(&image);
    XDebugInfo debug;
    debug.lines = {"a = 1", "b"};
    XCStoken name(xstd::XToken("b", xstd::tokenLabel, {1, 6, 8, 8}));
    name.setKind(TK_STACKVAR);
    builder.writeOp(&debug, 1, OP_MOV);
    builder.writeTok(&debug, token(TK_AX));
    builder.writeTok(&debug, name);
    builder.writeOp(&debug, 1, OP_RETURN);
    builder.writeOp(&debug, 2, xstd::XString("_!"));
    EXPECT_EQ(debug.lineOf, (std::map<int32_t, int32_t>{{0, 1}, {6, 2}}));
    EXPECT_EQ(debug.tokens.size(), 1u);
    EXPECT_EQ(debug.tokenText(2), "b");
    EXPECT_EQ(debug.tokenText(1), "");
    EXPECT_EQ(debug.lineAt(6), 2);
    EXPECT_EQ(debug.lineAt(5), -1);
    EXPECT_EQ(debug.lineText(6), "b");
    EXPECT_EQ(debug.describe(2), "line:2, col:2, tok: b");
    EXPECT_EQ(debug.describe(0), "a = 1");
    debug.addLine(2, 1);
    EXPECT_EQ(debug.describe(2), "line:2, col:2, tok: b => a = 1");
    debug.addLine(2, 3);
    EXPECT_EQ(debug.lineText(2), "");
    builder.setPos(2);
    EXPECT_EQ(builder.readOperand(&debug).text, "b");
}

} // namespace
