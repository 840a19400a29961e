#include "script/XScript.h"

#include "script/XScriptNesting.h"

#include <cstring>
#include <string_view>
#include <utility>

namespace huge {

namespace {

// A whole expression binds every operator above this; the brackets and separators below it end
// the expression.
constexpr int16_t basePrec = 2;
constexpr int16_t prefixPrec = 253;
constexpr int16_t assignPrec = 244;

int16_t operatorPrec(std::string_view text)
{
    static const std::unordered_map<std::string_view, int16_t> table = {
        {"(", 256},  {"{", 256},  {"[", 256},  {".", 255},   {"**", 254},  {"^", 254},
        {"_~", 253}, {"_!", 253}, {"_-", 253}, {"_+", 253},  {"_&", 253},  {">>", 252},
        {"<<", 252}, {"^|", 251}, {"|", 251},  {"&", 251},   {"%", 250},   {"*", 249},
        {"/", 249},  {"+", 248},  {"-", 248},  {"==", 247},  {"!=", 247},  {"<", 247},
        {"<=", 247}, {">", 247},  {">=", 247}, {"&&", 246},  {"||", 245},  {"=", 244},
        {"+=", 244}, {"-=", 244}, {"*=", 244}, {"**=", 244}, {"^=", 244},  {"/=", 244},
        {"%=", 244}, {"|=", 244}, {"&=", 244}, {"^|=", 244}, {"<<=", 244}, {">>=", 244},
        {")", 1},    {"}", 1},    {"]", 1},    {",", 1},     {";", 1},
    };
    const auto found = table.find(text);
    return found == table.end() ? 0 : found->second;
}

// Only operators have a precedence: a string literal "+" has the text of one.
int16_t precedence(const XCStoken& token)
{
    return token.kind == TK_OPERATOR ? operatorPrec(token.text) : 0;
}

bool isSuffix(const XCStoken& token)
{
    return token.isOperator(".") || token.isOperator("(") || token.isOperator("[");
}

bool isOneOf(const XCStoken& token, const char* characters)
{
    return token.kind == TK_OPERATOR && token.text.size() == 1 &&
           std::strchr(characters, token.text[0]) != nullptr;
}

} // namespace

/// The state of one expression while its operators are read.
struct XScript_base::Evaluation {
    size_t mark;   ///< the frame's size when it began: slots from here on are its own
    XCStoken data; ///< the value so far
    XCStoken tok;  ///< the operator in hand
    std::vector<int32_t> falseList; ///< open jumps of && and ||
    std::vector<int32_t> trueList;
};

XCStoken XScript_base::evalWhole(XCStoken& nextTok)
{
    const Nesting nesting(*this);
    return eval(basePrec, nextTok);
}

XCStoken XScript_base::eval(int16_t minPrec, XCStoken& nextTok)
{
    Evaluation e{frame().size(), {}, {}, {}, {}};
    e.data = getData(e.tok);
    if (!e.tok.isNull()) {
        requireOperator(e.tok);
        e.tok.prec = precedence(e.tok);
        while (!e.tok.isNull() && (e.tok.prec > minPrec || isSuffix(e.tok))) {
            evalStep(e);
            e.tok.prec = precedence(e.tok);
        }
        flushLazy(e);
    }
    leaveFrame(e.data, e.mark);
    nextTok = std::move(e.tok);
    return std::move(e.data);
}

void XScript_base::requireOperator(const XCStoken& token) const
{
    if (token.kind == TK_OPERATOR)
        return;
    const xstd::XString text = token.toString(true);
    throw tokenError(X_HERE, "This must be an operator, but it is:[" + text + "]", token,
                     {{"token", text}});
}

void XScript_base::evalStep(Evaluation& e)
{
    if (e.data.kind == TK_AX)
        keepSafe(e);
    if (e.data.isNull())
        evalPrefix(e);
    else if (e.tok.isOperator("."))
        evalMember(e);
    else if (isOneOf(e.tok, "(["))
        evalCall(e);
    else if (e.tok.isOperator("&&") || e.tok.isOperator("||"))
        evalLazy(e);
    else
        evalBinary(e);
}

// The accumulator is about to be overwritten: its value moves into a slot of this expression. One
// slot is enough, however long the chain of operators.
void XScript_base::keepSafe(Evaluation& e)
{
    if (frame().size() != e.mark + 1) {
        e.data = push(e.data);
        return;
    }
    const XCStoken slot(TK_STACK, static_cast<uint16_t>(e.mark));
    writeMove(slot, e.data);
    e.data = slot;
}

void XScript_base::evalMember(Evaluation& e)
{
    XCStoken name = nextToken();
    if (name.kind != TK_LABEL)
        throw tokenError(X_HERE, "A member name is expected here", name);
    name.setKind(TK_STRING);
    XCStoken behind = nextToken();
    int32_t count = 0;
    if (isOneOf(behind, "(["))
        count = getParams(behind, e.tok);
    else
        putBack(behind);
    writeOp(OP_INVOKE);
    writeTok(e.data);
    writeTok(name);
    writeInt(count);
    popTo(e.mark, false);
    e.data = XCStoken(TK_AX);
    e.tok = nextToken();
}

void XScript_base::evalCall(Evaluation& e)
{
    const XCStoken open = std::move(e.tok);
    const int32_t count = getParams(open, e.tok);
    writeOp(OP_EXEC);
    writeTok(e.data);
    writeInt(count);
    popTo(e.mark, false);
    e.data = XCStoken(TK_AX);
    e.tok = nextToken();
}

void XScript_base::evalLazy(Evaluation& e)
{
    const int16_t prec = e.tok.prec;
    if (e.tok.isOperator("&&"))
        e.falseList.push_back(writeJumpIf(OP_JMP_FALSE, e.data));
    else
        e.trueList.push_back(writeJumpIf(OP_JMP_TRUE, e.data));
    e.data = eval(prec, e.tok);
    if (precedence(e.tok) < prec)
        flushLazy(e);
}

void XScript_base::evalBinary(Evaluation& e)
{
    const XCStoken op = std::move(e.tok);
    const XCStoken rhs = eval(op.prec, e.tok);
    writeOp(op);
    writeTok(e.data);
    writeTok(rhs);
    if (op.prec != assignPrec)
        e.data = XCStoken(TK_AX);
}

// Gives the open jumps of a chain of && or || their ends: true or false in the accumulator.
void XScript_base::flushLazy(Evaluation& e)
{
    if (e.falseList.empty() && e.trueList.empty())
        return;
    e.falseList.push_back(writeJumpIf(OP_JMP_FALSE, e.data));
    XCStoken truth(TK_BOOL);
    truth.text = "true";
    patchToEnd(e.trueList);
    writeMove(XCStoken(TK_AX), truth);
    const int32_t toEnd = writeJump();
    truth.text = "false";
    patchToEnd(e.falseList);
    writeMove(XCStoken(TK_AX), truth);
    patchToEnd({toEnd});
    e.trueList.clear();
    e.falseList.clear();
    e.data = XCStoken(TK_AX);
}

// There is no value yet: a prefix operator or a bracket gives one.
void XScript_base::evalPrefix(Evaluation& e)
{
    if (e.tok.isOperator("(")) {
        evalBracket(e);
        return;
    }
    if (e.tok.prec != prefixPrec)
        throw tokenError(X_HERE, "here should be a operator data", e.tok);
    const XCStoken prefix = std::move(e.tok);
    e.data = eval(prefixPrec, e.tok);
    if (prefix.isOperator("_&")) {
        e.data.byRef = true;
    } else if (!prefix.isOperator("_+")) {
        writeOp(prefix);
        writeTok(e.data);
        e.data = XCStoken(TK_AX);
    }
}

void XScript_base::evalBracket(Evaluation& e)
{
    e.data = evalWhole(e.tok);
    if (e.tok.isNull())
        return;
    if (!e.tok.isOperator(")")) {
        const xstd::XString text = e.tok.toString(true);
        throw tokenError(X_HERE, "This must be an operator ')', but it is:[" + text + "]", e.tok,
                         {{"token", text}});
    }
    e.tok = nextToken();
}

// The slots of the expression go. What lies in one of them, or needs the modulus in one of them,
// is saved first.
void XScript_base::leaveFrame(XCStoken& data, size_t mark)
{
    const bool inSlot = data.kind == TK_STACKVAR || data.kind == TK_STACK;
    if ((inSlot && data.idx >= mark) ||
        (data.kind == TK_MODINT && data.modIdx >= static_cast<int32_t>(mark)))
        moveToAx(data);
    popTo(mark, false);
}

XCStoken XScript_base::getData(XCStoken& nextTok)
{
    XCStoken tok = nextToken();
    if (tok.isNull() || isOneOf(tok, ")]},;(")) {
        nextTok = std::move(tok);
        return {};
    }
    if (isOneOf(tok, "+-!~&")) {
        tok.text.insert(0, 1, '_');
        nextTok = std::move(tok);
        return {};
    }
    if (tok.kind == TK_LABEL)
        return getLabelData(tok, nextTok);
    if (tok.isOperator("["))
        tok = compileClosure();
    else if (tok.isOperator("%"))
        tok = compileModular();
    else if (tok.kind == TK_OPERATOR)
        throw tokenError(X_HERE, "here should be a operator data", tok);
    else
        giveModulus(tok);
    nextTok = nextToken();
    return tok;
}

XCStoken XScript_base::getLabelData(const XCStoken& label, XCStoken& nextTok)
{
    xstd::XString word = label.text;
    word.lower_();
    XCStoken result;
    if (word == "var") {
        XCStoken end;
        result = compileVar(end);
        putBack(end);
    } else if (word == "iif") {
        result = compileIif();
        if (result.isNull())
            result = label;
    } else {
        result = resolveName(label);
    }
    nextTok = nextToken();
    return result;
}

int32_t XScript_base::getParams(const XCStoken& open, XCStoken& nextTok)
{
    if (!isOneOf(open, "(["))
        throw tokenError(X_HERE, "Here must be '(' or '['", open);
    int32_t count = 0;
    do {
        XCStoken value = evalWhole(nextTok);
        if (value.isNull())
            break;
        push(std::move(value));
        ++count;
    } while (nextTok.isOperator(","));
    checkTok(nextTok, open.isOperator("(") ? ")" : "]");
    return count;
}

// Behind the %: a scope in which integer literals are residues, or plain again.
XCStoken XScript_base::compileModular()
{
    XCStoken tok = nextToken();
    if (!isOneOf(tok, "({"))
        throw tokenError(X_HERE, "This should be a bracket '(' or '{' ", tok);
    int16_t scope = modulusOff;
    if (tok.isOperator("(")) {
        scope = compileModulus();
        tok = nextToken();
    }
    m_modStack.push_back(scope);
    XCStoken result;
    if (tok.isOperator("{")) {
        result = compileBraces();
    } else {
        putBack(tok);
        result = evalWhole(tok);
        putBack(tok); // the expression around this one ends there too
    }
    m_modStack.pop_back();
    return result;
}

// Between the brackets of %(...): the slot of the modulus, or modulusOff when there is none.
int16_t XScript_base::compileModulus()
{
    m_decoder->skipBlank();
    if (m_decoder->isChar(')')) {
        nextToken();
        return modulusOff;
    }
    m_modStack.push_back(modulusNone);
    XCStoken end;
    const XCStoken modulus = evalWhole(end);
    const XCStoken slot = pushNull();
    writeOp(OP_MODELER);
    writeTok(slot);
    writeTok(modulus);
    m_modStack.pop_back();
    if (!end.isOperator(")"))
        throw tokenError(X_HERE, "This should be a bracket ')' ", end);
    return static_cast<int16_t>(slot.idx);
}

// Only the branch taken is evaluated; both leave their value in the accumulator.
XCStoken XScript_base::compileIif()
{
    XCStoken tok = nextToken();
    if (!tok.isOperator("(")) {
        putBack(tok);
        return {};
    }
    const XCStoken condition = evalWhole(tok);
    const int32_t toSecond = writeJumpIf(OP_JMP_FALSE, condition);
    requireIifTok(tok, ",");
    writeMove(XCStoken(TK_AX), evalWhole(tok));
    const int32_t toEnd = writeJump();
    requireIifTok(tok, ",");
    patchToEnd({toSecond});
    writeMove(XCStoken(TK_AX), evalWhole(tok));
    requireIifTok(tok, ")");
    patchToEnd({toEnd});
    return XCStoken(TK_AX);
}

void XScript_base::requireIifTok(const XCStoken& token, const char* expected) const
{
    if (!token.isOperator(expected))
        throw tokenError(X_HERE, "IIF (condition, value_1, value_2) requires three parameters",
                         token, {{"token", token.toString(true)}});
}

} // namespace huge
