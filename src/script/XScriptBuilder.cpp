#include "script/XScriptBuilder.h"

#include "common/XException.h"

#include <algorithm>
#include <cstring>
#include <string_view>
#include <unordered_map>
#include <utility>

namespace huge {

namespace {

constexpr int64_t maxImage = INT32_MAX;

// Payload bytes that every operand of a tag has; more may follow where a length stands in front.
constexpr size_t fixedPayload[] = {0, 1, 10, 12, 4, 10, 10, 2, 2, 2, 2, 2, 10, 0};

constexpr const char* tagTexts[] = {"",      "BOOL",       "INT",     "MODINT", "OFFSET",
                                    "DOU",   "IMAG",       "STR",     "EXTEND", "STACKVAR",
                                    "STACK", "CLOSUREVAR", "CLOSURE", "AX"};

xstd::XExceptionItem failure(const xstd::XSourceLocation& location, const xstd::XString& message)
{
    return xstd::XExceptionItem(location, "scriptBuilder").setMess(message);
}

xstd::XExceptionItems wrongOperand(const xstd::XSourceLocation& location, xod_type tag,
                                   int32_t progPos)
{
    return xstd::XExceptionItems().add(
        failure(location, xstd::XString("This is not a OD_") + tagTexts[tag] + " operand!")
            .setExtend("progPos", progPos)
            .setExtend("dataSize", static_cast<uint64_t>(fixedPayload[tag])));
}

xop_type opOfText(std::string_view text)
{
    static const std::unordered_map<std::string_view, xop_type> table = {
        {"=", OP_MOV},         {"+", OP_ADD},         {"-", OP_DEC},        {"*", OP_MUL},
        {"/", OP_DIV},         {"**", OP_POW},        {"^", OP_POW},        {"%", OP_PERCENT},
        {"_!", OP_NOT},        {"_-", OP_NEG},        {"_~", OP_BIT_NOT},   {"==", OP_EQU},
        {"!=", OP_NOTEQU},     {"<", OP_LESS},        {">", OP_GREAT},      {"<=", OP_LESSEQU},
        {">=", OP_GREATEQU},   {"|", OP_BIT_OR},      {"&", OP_BIT_AND},    {"^|", OP_BIT_XOR},
        {">>", OP_BIT_SHR},    {"<<", OP_BIT_SHL},    {"+=", OP_ADD_TO},    {"-=", OP_DEC_TO},
        {"*=", OP_MUL_TO},     {"/=", OP_DIV_TO},     {"**=", OP_POW_TO},   {"^=", OP_POW_TO},
        {"%=", OP_PER_TO},     {"|=", OP_BITOR_TO},   {"&=", OP_BITAND_TO}, {"^|=", OP_BITXOR_TO},
        {">>=", OP_BITSHR_TO}, {"<<=", OP_BITSHL_TO},
    };
    const auto found = table.find(text);
    return found == table.end() ? OP_NULL : found->second;
}

HugeInteger integerOf(const XCStoken& literal)
{
    return std::move(HugeInteger().fromText_(literal.text));
}

int64_t itemInt(const XCStoken& closure, size_t item)
{
    const int64_t* value =
        item < closure.data.size() ? std::get_if<int64_t>(&closure.data[item]) : nullptr;
    return value != nullptr ? *value : 0;
}

od_closure closureOf(const XCStoken& token)
{
    od_closure od;
    od.entry = static_cast<uint32_t>(itemInt(token, 0));
    od.maxStack = static_cast<uint16_t>(itemInt(token, 1));
    od.paramCount = static_cast<uint16_t>(itemInt(token, 2));
    const auto count = static_cast<size_t>(itemInt(token, 3));
    for (size_t i = 0; i < count; ++i)
        od.closureVars.push_back(static_cast<uint16_t>(itemInt(token, 4 + i)));
    return od;
}

} // namespace

XScriptBuilder::XScriptBuilder(std::vector<uint8_t>* prog)
    : m_prog(prog), m_size(static_cast<int64_t>(prog->size()))
{}

void XScriptBuilder::reset()
{
    m_prog->clear();
    m_size = 0;
    m_pos = 0;
    m_lastLine = -1;
}

void XScriptBuilder::decodeExtend(od_extend& out, const XScriptExtendData& data)
{
    out = {};
    if (data.isEmpty())
        return;
    if (data.format() != 1)
        data.fail();
    XScriptExtendData reader = data;
    out.format = reader.read8(0);
    out.name = reader.readString();
}

void XScriptBuilder::encodeExtend(XScriptExtendData& out, const od_extend& name)
{
    out = XScriptExtendData::fromName(name.name);
}

void XScriptBuilder::write(const void* data, size_t length, int32_t at)
{
    const int64_t begin = place(at);
    const int64_t end = begin + static_cast<int64_t>(length);
    if (length > static_cast<size_t>(maxImage) || end > maxImage)
        throw xstd::XExceptionItems().add(
            failure(X_HERE, "The program is too long")
                .setExtend("progPos", begin)
                .setExtend("dataSize", static_cast<uint64_t>(length)));
    if (static_cast<size_t>(end) > m_prog->size())
        m_prog->resize(static_cast<size_t>(end));
    if (length != 0)
        std::memcpy(m_prog->data() + begin, data, length);
    m_pos = end;
    m_size = std::max(m_size, end);
}

void XScriptBuilder::writeOp(xop_type op, int32_t at)
{
    const uint8_t byte = op;
    write(&byte, 1, at);
}

void XScriptBuilder::writeOp(const xstd::XString& text, int32_t at)
{
    const xop_type op = opOfText(text);
    if (op == OP_NULL)
        throw xstd::XExceptionItems().add(failure(X_HERE, "This is not a operand!")
                                              .setExtend("progPos", place(at))
                                              .setExtend("token", text));
    writeOp(op, at);
}

void XScriptBuilder::noteLine(XDebugInfo* debug, int32_t line, int32_t at)
{
    if (debug != nullptr && line != m_lastLine)
        debug->addLine(place(at), line);
    m_lastLine = line;
}

void XScriptBuilder::writeOp(XDebugInfo* debug, int32_t line, xop_type op, int32_t at)
{
    noteLine(debug, line, at);
    writeOp(op, at);
}

void XScriptBuilder::writeOp(XDebugInfo* debug, int32_t line, const xstd::XString& text, int32_t at)
{
    noteLine(debug, line, at);
    writeOp(text, at);
}

void XScriptBuilder::writeTok(XDebugInfo* debug, const XCStoken& token, int32_t at)
{
    if (debug != nullptr)
        debug->addToken(place(at), token);
    switch (token.kind) {
    case TK_AX:
        return writeReg(OD_AX, at);
    case TK_STACKVAR:
        return writeStackVar(token.idx, at);
    case TK_STACK:
        return writeStack(token.idx, at);
    case TK_CLOSUREVAR:
        return writeClosureVar(token.idx, at);
    case TK_BOOL:
        return writeBool({token.text == "true" || token.text == "1"}, at);
    case TK_INT:
        return writeInt({integerOf(token)}, at);
    case TK_MODINT:
        return writeModint({token.modIdx, integerOf(token)}, at);
    case TK_FLOAT:
        return writeFloat({HugeFloat::fromText_(token.text)}, at);
    case TK_IMAG:
        return writeImag({HugeFloat::fromText_(token.text)}, at);
    case TK_STRING:
        return writeStr({token.text}, at);
    case TK_EXTEND:
        return writeExtend({0, token.cursor.pos, token.size, token.text}, at);
    case TK_CLOSURE:
        return writeClosure(closureOf(token), at);
    default:
        throw xstd::XExceptionItems().add(failure(X_HERE, "Unrecognized token!")
                                              .setExtend("progPos", place(at))
                                              .setExtend("token", token.toString(true)));
    }
}

void XScriptBuilder::writeExtend(const od_extend& od, int32_t at)
{
    XScriptExtendData data;
    encodeExtend(data, od);
    m_scratch.assign(1, OD_EXTEND);
    appendPayload(m_scratch, data);
    writeScratch(at);
}

void XScriptBuilder::writeReg(xod_type tag, int32_t at)
{
    if (tag != OD_AX)
        throw wrongOperand(X_HERE, OD_AX, place(at));
    const uint8_t byte = tag;
    write(&byte, 1, at);
}

// --- reading ---

/// The payload of one operand, whose bytes are taken one field after the other. The builder's
/// cursor moves only when the operand is whole.
struct XScriptBuilder::Reader {
    Reader(XScriptBuilder& of, xod_type expected, int32_t at)
        : builder(of), tag(expected), progPos(of.place(at)), pos(progPos)
    {
        if (take(1)[0] != tag)
            fail();
    }
    ~Reader() = default;
    Reader(const Reader&) = delete;
    Reader& operator=(const Reader&) = delete;

    const uint8_t* take(size_t count)
    {
        if (pos > builder.m_size || count > static_cast<size_t>(builder.m_size - pos))
            fail();
        const uint8_t* bytes = builder.m_prog->data() + pos;
        pos += static_cast<int64_t>(count);
        return bytes;
    }
    uint64_t integer(size_t count)
    {
        const uint8_t* bytes = take(count);
        uint64_t value = 0;
        for (size_t i = count; i-- > 0;)
            value = value << 8 | bytes[i];
        return value;
    }
    uint16_t index() { return static_cast<uint16_t>(integer(2)); }
    template <class Record>
    Record done(Record record) const
    {
        builder.m_pos = pos;
        return record;
    }
    [[noreturn]] void fail() const { throw wrongOperand(X_HERE, tag, progPos); }

    XScriptBuilder& builder;
    xod_type tag;
    int32_t progPos;
    int64_t pos;
};

xop_type XScriptBuilder::readOp(int32_t at)
{
    const int32_t from = place(at);
    if (from >= m_size)
        return OP_NULL;
    m_pos = from + 1;
    return static_cast<xop_type>((*m_prog)[static_cast<size_t>(from)]);
}

od_bool XScriptBuilder::readBool(int32_t at)
{
    Reader reader(*this, OD_BOOL, at);
    const bool value = reader.integer(1) != 0;
    return reader.done(od_bool{value});
}

od_int XScriptBuilder::readInt(int32_t at)
{
    Reader reader(*this, OD_INT, at);
    const size_t length = reader.index();
    const uint8_t* bytes = reader.take(length);
    return reader.done(od_int{integerFromPayload(bytes, length)});
}

od_modint XScriptBuilder::readModint(int32_t at)
{
    Reader reader(*this, OD_MODINT, at);
    const size_t length = reader.index();
    const auto modIdx = static_cast<int16_t>(reader.index());
    if (length < 2)
        reader.fail();
    const uint8_t* bytes = reader.take(length - 2);
    return reader.done(od_modint{modIdx, integerFromPayload(bytes, length - 2)});
}

od_offset XScriptBuilder::readOffset(int32_t at)
{
    Reader reader(*this, OD_OFFSET, at);
    const auto value = static_cast<int32_t>(reader.integer(4));
    return reader.done(od_offset{value});
}

HugeFloat XScriptBuilder::readNumber(xod_type tag, int32_t at)
{
    Reader reader(*this, tag, at);
    const size_t length = reader.index();
    const uint8_t* bytes = reader.take(length);
    return reader.done(floatFromPayload(bytes, length));
}

od_float XScriptBuilder::readFloat(int32_t at)
{
    return {readNumber(OD_FLOAT, at)};
}

od_imag XScriptBuilder::readImag(int32_t at)
{
    return {readNumber(OD_IMAG, at)};
}

od_str XScriptBuilder::readStr(int32_t at)
{
    Reader reader(*this, OD_STR, at);
    const size_t length = reader.index();
    const auto* text = reinterpret_cast<const char*>(reader.take(length));
    return reader.done(od_str{xstd::XString(std::string(text, length))});
}

od_extend XScriptBuilder::readExtend(int32_t at)
{
    Reader reader(*this, OD_EXTEND, at);
    const size_t length = reader.index();
    const uint8_t* bytes = reader.take(length);
    od_extend od;
    decodeExtend(od, XScriptExtendData(std::vector<uint8_t>(bytes, bytes + length)));
    return reader.done(std::move(od));
}

uint16_t XScriptBuilder::readIndex(xod_type tag, int32_t at)
{
    Reader reader(*this, tag, at);
    const uint16_t idx = reader.index();
    return reader.done(idx);
}

od_stackvar XScriptBuilder::readStackVar(int32_t at)
{
    return {readIndex(OD_STACKVAR, at)};
}

od_stack XScriptBuilder::readStack(int32_t at)
{
    return {readIndex(OD_STACK, at)};
}

od_closurevar XScriptBuilder::readClosureVar(int32_t at)
{
    return {readIndex(OD_CLOSUREVAR, at)};
}

od_closure XScriptBuilder::readClosure(int32_t at)
{
    Reader reader(*this, OD_CLOSURE, at);
    od_closure od;
    od.entry = static_cast<uint32_t>(reader.integer(4));
    od.maxStack = reader.index();
    od.paramCount = reader.index();
    const size_t count = reader.index();
    for (size_t i = 0; i < count; ++i)
        od.closureVars.push_back(reader.index());
    return reader.done(std::move(od));
}

xod_type XScriptBuilder::readReg(int32_t at)
{
    const Reader reader(*this, OD_AX, at);
    return reader.done(OD_AX);
}

prog_od XScriptBuilder::readOperand(const XDebugInfo* debug)
{
    prog_od od;
    if (m_pos >= m_size)
        return od;
    const int32_t from = pos();
    const uint8_t tag = (*m_prog)[static_cast<size_t>(from)];
    switch (tag) {
    case OD_BOOL:
        od.value = readBool();
        break;
    case OD_INT:
        od.value = readInt();
        break;
    case OD_MODINT: {
        od_modint number = readModint();
        od.modIdx = number.modIdx;
        od.value = std::move(number);
        break;
    }
    case OD_OFFSET:
        od.value = readOffset();
        break;
    case OD_FLOAT:
        od.value = readFloat();
        break;
    case OD_IMAG:
        od.value = readImag();
        break;
    case OD_STR:
        od.value = readStr();
        break;
    case OD_EXTEND:
        od.value = readExtend();
        break;
    case OD_STACKVAR:
        od.value = readStackVar();
        break;
    case OD_STACK:
        od.value = readStack();
        break;
    case OD_CLOSUREVAR:
        od.value = readClosureVar();
        break;
    case OD_CLOSURE:
        od.value = readClosure();
        break;
    case OD_AX:
        readReg();
        break;
    default:
        return od;
    }
    od.type = static_cast<xod_type>(tag);
    if (debug != nullptr)
        od.text = debug->tokenText(from);
    return od;
}

} // namespace huge
