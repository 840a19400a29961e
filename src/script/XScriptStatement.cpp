#include "script/XScript.h"

#include "script/XScriptNesting.h"

#include <utility>

namespace huge {

XCStoken XScript_base::compileBlock(XCStoken& nextTok, bool single, bool popAtEnd)
{
    const Nesting nesting(*this);
    const size_t mark = frame().size();
    XCStoken result;
    while (compileStatement(result, nextTok, mark) && !single)
        ;
    if (!result.isNull())
        moveToAx(result); // out of the slots that go now
    if (popAtEnd)
        popTo(mark, false);
    return result;
}

// One statement of a block whose slots begin at mark. Returns false when the block ended instead;
// nextTok is then what ended it, a null token at the end of the text.
bool XScript_base::compileStatement(XCStoken& result, XCStoken& nextTok, size_t mark)
{
    XCStoken tok = nextToken();
    if (tok.isNull() || tok.isOperator(")") || tok.isOperator("]") || tok.isOperator("}")) {
        nextTok = std::move(tok);
        return false;
    }
    if (tok.isOperator(";") || tok.isOperator(","))
        nextTok = std::move(tok);
    else if (tok.isOperator("{"))
        result = compileBraces();
    else if (tok.kind != TK_LABEL || !compileWord(tok, result, nextTok, mark))
        result = compileExpression(tok);
    return true;
}

// A statement that begins with a word of its own; false, and nothing done, for any other word.
bool XScript_base::compileWord(const XCStoken& word, XCStoken& result, XCStoken& nextTok,
                               size_t mark)
{
    if (word.text == "break" || word.text == "continue") {
        compileLoopJump(word);
        return true;
    }
    if (word.text == "var") {
        result = compileVar(nextTok);
        return true;
    }
    if (word.text == "if")
        compileIf();
    else if (word.text == "for")
        compileFor();
    else if (word.text == "return" || word.text == "ret")
        compileReturn(nextTok, mark);
    else
        return false;
    result = {};
    return true;
}

XCStoken XScript_base::compileExpression(const XCStoken& first)
{
    putBack(first);
    XCStoken end;
    XCStoken result = evalWhole(end);
    if (!end.isOperator(";"))
        putBack(end);
    return result;
}

// Behind a {: the statements up to its }.
XCStoken XScript_base::compileBraces()
{
    XCStoken end;
    XCStoken result = compileBlock(end, false, true);
    checkTok(end, "}");
    return result;
}

// What an if, else, for or closure governs: statements in braces, or a single one.
void XScript_base::compileBody(XCStoken& nextTok)
{
    XCStoken tok = nextToken();
    if (tok.isOperator("{")) {
        compileBraces();
        return;
    }
    putBack(tok);
    compileBlock(nextTok, true, true);
}

XCStoken XScript_base::compileVar(XCStoken& nextTok)
{
    XCStoken result;
    do
        result = compileDeclarator(nextTok);
    while (nextTok.isOperator(","));
    return result;
}

XCStoken XScript_base::compileDeclarator(XCStoken& nextTok)
{
    const XCStoken name = nextToken();
    if (name.kind != TK_LABEL)
        throw tokenError(
            X_HERE, "Variable name is expected here, but it is: [" + name.toString(false) + "]",
            name, {{"token", name.toString(true)}});
    nextTok = nextToken();
    if (!nextTok.isOperator("="))
        return declareVar(name);
    // The name comes last: "var x = x" reads the x outside.
    XCStoken variable = push(evalWhole(nextTok));
    frame().nameTop(name.text);
    variable.setKind(TK_STACKVAR);
    variable.text = name.text;
    return variable;
}

void XScript_base::compileReturn(XCStoken& nextTok, size_t mark)
{
    nextTok = nextToken();
    if (nextTok.isOperator(";")) {
        writeOp(OP_MOV);
        writeTok(XCStoken(TK_AX));
        writeInt(0);
    } else {
        putBack(nextTok);
        XCStoken value = evalWhole(nextTok);
        moveToAx(value);
    }
    popTo(mark, false);
    writeOp(OP_RETURN);
}

void XScript_base::compileLoopJump(const XCStoken& word)
{
    if (m_loops.empty())
        throw tokenError(X_HERE, word.text + " is not inside a loop", word);
    XLoopInfo& loop = m_loops.back();
    std::vector<int32_t>& jumps = word.text == "break" ? loop.breakList : loop.continueList;
    jumps.push_back(writeJump());
    checkTok(nextToken(), ";");
}

void XScript_base::compileIf()
{
    const size_t mark = frame().size();
    std::vector<int32_t> exits;
    XCStoken tok;
    XCStoken condition = compileCondition(false);
    for (;;) {
        const int32_t toElse = writeJumpIf(OP_JMP_FALSE, condition);
        compileBody(tok);
        exits.push_back(writeJump());
        patchToEnd({toElse});
        tok = nextToken();
        if (!tok.isLabel("else")) {
            putBack(tok);
            break;
        }
        popTo(mark, false);
        tok = nextToken();
        if (!tok.isLabel("if")) {
            putBack(tok);
            compileBody(tok);
            exits.push_back(writeJump());
            break;
        }
        condition = compileCondition(true);
    }
    patchToEnd(exits);
    // The ways here hold different counts of slots: a condition may have declared some.
    popTo(mark, true);
}

// The bracket behind an if.
XCStoken XScript_base::compileCondition(bool popAtEnd)
{
    XCStoken tok = nextToken();
    if (!tok.isOperator("("))
        throw tokenError(X_HERE, "If statement must be followed by a condition", tok);
    XCStoken condition = compileBlock(tok, false, popAtEnd);
    checkTok(tok, ")");
    return condition;
}

/// Where the parts of a loop stand in the code.
struct XScript_base::LoopPlaces {
    int32_t step;   ///< the code of the step
    int32_t toExit; ///< operand of the jump out, still open
};

void XScript_base::compileFor()
{
    m_loops.emplace_back();
    XCStoken tok = nextToken();
    checkTok(tok, "(");
    const size_t mark = frame().size();
    compileBlock(tok, true, false); // its variables live as long as the loop
    requireSemicolon(tok);
    const LoopPlaces places = compileForHead(frame().size());
    compileBody(tok);
    writeJump(places.step);
    const int32_t exit = m_builder->pos();
    popTo(mark, true);
    patch({places.toExit}, exit);
    patch(m_loops.back().breakList, exit);
    patch(m_loops.back().continueList, places.step);
    m_loops.pop_back();
}

// Condition and step, up to the closing bracket. Each part cuts the stack first: the ways that
// lead to it may have left more slots behind than the loop's own.
XScript_base::LoopPlaces XScript_base::compileForHead(size_t loopFrame)
{
    XCStoken tok;
    const int32_t conditionPlace = m_builder->pos();
    popTo(loopFrame, true);
    const XCStoken condition = evalWhole(tok);
    LoopPlaces places{};
    places.toExit = writeJumpIf(OP_JMP_FALSE, condition);
    const int32_t toBody = writeJump();
    requireSemicolon(tok);
    places.step = m_builder->pos();
    popTo(loopFrame, true);
    evalWhole(tok);
    writeJump(conditionPlace);
    patchToEnd({toBody});
    popTo(loopFrame, true);
    if (tok.isOperator(";"))
        tok = nextToken();
    checkTok(tok, ")");
    return places;
}

void XScript_base::requireSemicolon(const XCStoken& token) const
{
    if (!token.isOperator(";"))
        throw tokenError(
            X_HERE, "This should be a [;], but it's actually a [" + token.toString(false) + "]",
            token);
}

// Behind the [: parameters, ] and body. The body stands in place, and a jump leads over it.
XCStoken XScript_base::compileClosure()
{
    // The body runs in a frame of its own: neither a loop nor a modulus around it reaches into it.
    const std::vector<XLoopInfo> outerLoops = std::exchange(m_loops, {});
    const std::vector<int16_t> outerModuli = std::exchange(m_modStack, {});
    const int32_t overBody = writeJump();
    writeOp(OP_CLOSURE_BEGIN);
    const int32_t paramOperand = m_builder->pos();
    m_builder->writeOffset(0);
    const int32_t entry = m_builder->pos();

    ClosureVarInfo& closure = openClosure();
    const size_t params = closure.size();
    XCStoken end;
    compileBody(end);
    if (end.isOperator(";"))
        putBack(end);
    writeOp(OP_RETURN);
    writeOp(OP_CLOSURE_END);
    patchToEnd({overBody});
    patch({paramOperand}, static_cast<int32_t>(params));

    XCStoken literal(TK_CLOSURE);
    literal.data = {int64_t{entry}, int64_t{closure.maxStack()}, static_cast<int64_t>(params),
                    static_cast<int64_t>(closure.closureVars().size())};
    for (const uint32_t slot : closure.closureVars())
        literal.data.emplace_back(int64_t{slot});
    m_closures.pop_back();
    m_loops = outerLoops;
    m_modStack = outerModuli;
    return literal;
}

// Reads the parameter list and its ]; from here on the closure's frame is the current one.
ClosureVarInfo& XScript_base::openClosure()
{
    m_closures.emplace_back();
    XCStoken tok = nextToken();
    if (tok.isOperator("]"))
        return m_closures.back();
    for (;; tok = nextToken()) {
        if (tok.kind != TK_LABEL)
            throw closureParamError(tok);
        takeSlot(tok.text);
        tok = nextToken();
        if (tok.isOperator("]"))
            return m_closures.back();
        if (!tok.isOperator(","))
            throw closureParamError(tok);
    }
}

xstd::XExceptionItems XScript_base::closureParamError(const XCStoken& token) const
{
    return tokenError(X_HERE,
                      "The list of closure parameters must end with ']' and the data at the "
                      "current location is: [" +
                          token.toString(false) + "]",
                      token);
}

} // namespace huge
