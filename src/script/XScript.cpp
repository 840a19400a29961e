#include "script/XScript.h"

#include "script/XScriptNesting.h"
#include "script/stackRoom.h"

#include <algorithm>
#include <utility>

namespace huge {

namespace {

constexpr size_t maxSlots = 32767; // slot indexes are signed 16-bit numbers in places

// A deep text costs two levels where a bracket and what it holds count apart.
constexpr int32_t maxDepth = 2000;
// What must be left of the machine stack for a level's own steps and for raising a failure.
constexpr size_t stackReserve = 128 * 1024;

} // namespace

// --- the image of a frame ---

uint16_t XStackInfo::push(const std::string& name)
{
    const auto slot = static_cast<uint16_t>(m_names.size());
    m_names.emplace_back();
    m_maxStack = std::max(m_maxStack, static_cast<int32_t>(m_names.size()));
    nameTop(name);
    return slot;
}

void XStackInfo::nameTop(const std::string& name)
{
    m_names.back() = name;
    if (!name.empty())
        m_slotsOf[name].push_back(static_cast<uint16_t>(m_names.size() - 1));
}

void XStackInfo::cut(size_t count)
{
    while (m_names.size() > count) {
        const std::string& name = m_names.back();
        if (!name.empty())
            m_slotsOf[name].pop_back();
        m_names.pop_back();
    }
}

int32_t XStackInfo::find(const std::string& name) const
{
    const auto found = m_slotsOf.find(name);
    return found == m_slotsOf.end() || found->second.empty() ? -1 : found->second.back();
}

uint16_t ClosureVarInfo::capture(uint32_t slot)
{
    const auto [place, isNew] =
        m_placeOf.emplace(slot, static_cast<uint16_t>(m_closureVars.size()));
    if (isNew)
        m_closureVars.push_back(slot);
    return place->second;
}

// --- the object ---

XScript_base::XScript_base() = default;

XScript_base::~XScript_base() = default;

void XScript_base::attach(XScriptDecoder* decoder, XScriptBuilder* builder) noexcept
{
    m_decoder = decoder;
    m_builder = builder;
}

XScript_base::Nesting::Nesting(XScript_base& script) : m_script(script)
{
    if (m_script.m_depth >= maxDepth || stackRoom() < stackReserve)
        throw m_script.makeError(X_HERE, "The script is nested too deep");
    ++m_script.m_depth;
}

XCStoken XScript_base::compile(XDebugInfo* debug)
{
    if (debug != nullptr)
        m_debugInfo = debug;
    reset();
    try {
        XCStoken result = compileText();
        m_compiled = true;
        return result;
    } catch (xstd::XExceptionItems& failure) {
        failure.add(errorItem(X_HERE, "ScriptCompile Error", 0));
        throw;
    } catch (const std::exception& failure) {
        throw makeError(X_HERE, failure.what());
    }
}

void XScript_base::reset()
{
    m_compiled = false;
    m_program.reset();
    m_stack = {};
    m_modStack.clear();
    m_loops.clear();
    m_closures.clear();
    m_depth = 0;
    m_decoder->setCursor({});
    m_builder->reset();
}

XCStoken XScript_base::compileText()
{
    writeMaxStack(); // keeps its place until it is known
    XCStoken result;
    XCStoken end;
    for (m_decoder->skipBlank(); !m_decoder->isEnd(); m_decoder->skipBlank())
        result = compileBlock(end, false, true); // a stray closing bracket ends one
    writeMaxStack();
    m_builder->seekEnd();
    return result;
}

void XScript_base::writeMaxStack()
{
    const uint8_t bytes[progHeaderSize] = {static_cast<uint8_t>(m_stack.maxStack()),
                                           static_cast<uint8_t>(m_stack.maxStack() >> 8)};
    m_builder->write(bytes, sizeof bytes, 0);
}

// --- tokens ---

XCStoken XScript_base::nextToken()
{
    return XCStoken(m_decoder->next());
}

void XScript_base::putBack(const XCStoken& token)
{
    m_decoder->setCursor(token.cursor);
}

template <class Passed>
XCStoken XScript_base::tokenUntil(Passed passed)
{
    m_decoder->pushCursor();
    XCStoken token;
    try {
        m_decoder->setCursor({});
        do
            token = nextToken();
        while (!token.isNull() && !passed(m_decoder->cursor()));
    } catch (...) {
        m_decoder->restoreCursor();
        throw;
    }
    m_decoder->restoreCursor();
    return token;
}

XCStoken XScript_base::tokenAt(int32_t line, int32_t col)
{
    if (line < 0 || col < 0)
        return {};
    return tokenUntil([=](const xstd::XTextCursor& cursor) {
        return cursor.row > line || (cursor.row == line && cursor.column() > col);
    });
}

XCStoken XScript_base::tokenAt(int32_t pos)
{
    if (pos < 0 || pos > m_decoder->size())
        return {};
    return tokenUntil([=](const xstd::XTextCursor& cursor) { return cursor.pos > pos; });
}

// --- failures ---

xstd::XExceptionItem XScript_base::errorItem(const xstd::XSourceLocation& location,
                                             const xstd::XString& message, int32_t pos) const
{
    const xstd::XTextCursor& cursor = std::as_const(*m_decoder).cursor();
    const int32_t place = pos == 0 ? cursor.pos : pos;
    return xstd::XExceptionItem(location, "compile")
        .setMess(message)
        .setExtend("scriptPos", place)
        .setExtend("scriptLine", cursor.line())
        .setExtend("scriptCol", place - cursor.rowStart);
}

xstd::XExceptionItems XScript_base::makeError(const xstd::XSourceLocation& location,
                                              const xstd::XString& message, int32_t pos) const
{
    return xstd::XExceptionItems().add(errorItem(location, message, pos));
}

// The failure at a token: its own place, not that of the cursor behind it.
xstd::XExceptionItems XScript_base::tokenError(const xstd::XSourceLocation& location,
                                               const xstd::XString& message, const XCStoken& token,
                                               const TokenTexts& details) const
{
    xstd::XExceptionItem item = errorItem(location, message, 0);
    item.setExtend("scriptPos", token.cursor.pos)
        .setExtend("scriptLine", token.cursor.line())
        .setExtend("scriptCol", token.cursor.column());
    for (const auto& [key, text] : details)
        item.setExtend(key, text);
    return xstd::XExceptionItems().add(item);
}

void XScript_base::checkTok(const XCStoken& token, const char* expected) const
{
    if (token.isOperator(expected))
        return;
    XCStoken wanted(TK_OPERATOR);
    wanted.text = expected;
    const xstd::XString wantedText = wanted.toString(true);
    throw tokenError(X_HERE,
                     "[" + wantedText + "] is expected here, but it's actually [" +
                         token.toString(false) + "]",
                     token, {{"expectToks", wantedText}, {"actualTok", token.toString(true)}});
}

// --- the frame ---

XStackInfo& XScript_base::frame() noexcept
{
    return m_closures.empty() ? m_stack : m_closures.back();
}

uint16_t XScript_base::takeSlot(const std::string& name)
{
    if (frame().size() >= maxSlots)
        throw makeError(X_HERE, "A frame holds at most 32767 variables and temporaries");
    return frame().push(name);
}

XCStoken XScript_base::push(XCStoken value)
{
    const XCStoken slot(TK_STACK, takeSlot({}));
    giveModulus(value);
    writeOp(isReference(value) ? OP_PUSH_REF : OP_PUSH);
    writeTok(value);
    return slot;
}

XCStoken XScript_base::pushNull()
{
    const XCStoken slot(TK_STACK, takeSlot({}));
    writeOp(OP_PUSH_NULL);
    return slot;
}

XCStoken XScript_base::declareVar(const XCStoken& name)
{
    XCStoken variable = name;
    variable.setKind(TK_STACKVAR);
    variable.idx = takeSlot(name.text);
    if (m_debugInfo != nullptr)
        m_debugInfo->addToken(m_builder->pos(), name);
    writeOp(OP_PUSH_NULL);
    return variable;
}

void XScript_base::popTo(size_t count, bool force)
{
    if (!force && count >= frame().size())
        return;
    frame().cut(count);
    writeOp(OP_POPTO);
    writeInt(static_cast<int64_t>(count));
}

void XScript_base::giveModulus(XCStoken& literal) const
{
    if (literal.kind != TK_INT && literal.kind != TK_FLOAT)
        return;
    if (literal.modIdx != modulusOff)
        literal.modIdx = m_modStack.empty() ? modulusNone : m_modStack.back();
    if (literal.modIdx >= 0)
        literal.setKind(TK_MODINT);
}

// A closure sees its own frame and the one around it; what neither holds is the environment's.
XCStoken XScript_base::resolveName(const XCStoken& name)
{
    XCStoken result = name;
    result.setKind(TK_EXTEND);
    int32_t slot = frame().find(name.text);
    if (slot >= 0) {
        result.setKind(TK_STACKVAR);
        result.idx = static_cast<uint16_t>(slot);
    } else if (!m_closures.empty()) {
        const size_t depth = m_closures.size();
        const XStackInfo& around = depth > 1 ? m_closures[depth - 2] : m_stack;
        slot = around.find(name.text);
        if (slot >= 0) {
            result.setKind(TK_CLOSUREVAR);
            result.idx = m_closures.back().capture(static_cast<uint32_t>(slot));
        }
    }
    return result;
}

// --- writing ---

void XScript_base::writeOp(xop_type op)
{
    m_builder->writeOp(m_debugInfo, line(), op);
}

void XScript_base::writeOp(const XCStoken& operatorTok)
{
    m_builder->writeOp(m_debugInfo, line(), operatorTok.text);
}

int32_t XScript_base::line() const
{
    return std::as_const(*m_decoder).cursor().line();
}

void XScript_base::writeTok(const XCStoken& token)
{
    m_builder->writeTok(m_debugInfo, token);
}

void XScript_base::writeInt(int64_t value)
{
    m_builder->writeInt({HugeInteger(value)});
}

bool XScript_base::isReference(const XCStoken& value) noexcept
{
    return value.byRef &&
           (value.kind == TK_AX || value.kind == TK_STACKVAR || value.kind == TK_STACK);
}

void XScript_base::writeMove(const XCStoken& target, const XCStoken& value)
{
    writeOp(isReference(value) ? OP_REF : OP_MOV);
    writeTok(target);
    writeTok(value);
}

void XScript_base::moveToAx(XCStoken& value)
{
    if (value.kind == TK_AX)
        return;
    writeMove(XCStoken(TK_AX), value);
    value = XCStoken(TK_AX);
}

// Both give the position of the offset operand, to be patched.
int32_t XScript_base::writeJump(int32_t target)
{
    writeOp(OP_JMP);
    const int32_t operand = m_builder->pos();
    m_builder->writeOffset(target);
    return operand;
}

int32_t XScript_base::writeJumpIf(xop_type op, const XCStoken& condition)
{
    writeOp(op);
    writeTok(condition);
    const int32_t operand = m_builder->pos();
    m_builder->writeOffset(0);
    return operand;
}

void XScript_base::patch(const std::vector<int32_t>& operands, int32_t value)
{
    for (const int32_t operand : operands)
        m_builder->writeOffset(value, operand);
    m_builder->seekEnd();
}

void XScript_base::patchToEnd(const std::vector<int32_t>& operands)
{
    patch(operands, m_builder->size());
}

// --- a script of its own ---

XScript::XScript(const xstd::XString& text) : m_textDecoder(text), m_imageBuilder(image())
{
    attach(&m_textDecoder, &m_imageBuilder);
}

} // namespace huge
