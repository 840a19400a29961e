#pragma once

#include "common/XException.h"
#include "script/XScriptBuilder.h"
#include "script/XScriptDecoder.h"
#include "values/HugeVariant.h"

#include <cstdint>
#include <deque>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace huge {

class XScriptEnv;
class XScriptProgram;

/// The slots of one frame as they will lie when the program runs: a name for each, "" for a
/// nameless temporary. It is the scope chain too: a name is visible as long as its slot stands,
/// and a later slot hides an earlier one of the same name.
class XStackInfo {
public:
    size_t size() const noexcept { return m_names.size(); }
    int32_t maxStack() const noexcept { return m_maxStack; }
    const std::vector<std::string>& names() const noexcept { return m_names; }

    /// Appends a slot and returns its index.
    uint16_t push(const std::string& name);
    /// Names the top slot.
    void nameTop(const std::string& name);
    /// Drops all slots from count on.
    void cut(size_t count);
    /// The last slot of this name, or -1.
    int32_t find(const std::string& name) const;

private:
    std::vector<std::string> m_names;
    // The slots of each name, so that settling a name costs the same in a frame of any size.
    std::unordered_map<std::string, std::vector<uint16_t>> m_slotsOf;
    int32_t m_maxStack = 0;
};

/// The frame of a closure that is being compiled, and the slots of the frame around it that its
/// body reads, in the order of their first use.
class ClosureVarInfo : public XStackInfo {
public:
    const std::vector<uint32_t>& closureVars() const noexcept { return m_closureVars; }

    /// The place of an enclosing slot among the captured ones, appended if it is new.
    uint16_t capture(uint32_t slot);

private:
    std::vector<uint32_t> m_closureVars;
    std::unordered_map<uint32_t, uint16_t> m_placeOf;
};

/// The open jumps of a for loop: code positions of their offset operands.
struct XLoopInfo {
    std::vector<int32_t> breakList;
    std::vector<int32_t> continueList;
};

/// The compiler of the script language, in a single pass and without a syntax tree: it pulls
/// tokens from its decoder, keeps an image of the run-time stack, and writes instructions through
/// its builder. A token that an operation returns says where the value is to be found.
///
/// Who derives owns a decoder and a builder over image(), and attaches them when it is made.
/// Failures are of type "compile", with "scriptPos", "scriptLine" (from 1) and "scriptCol".
class XScript_base {
public:
    virtual ~XScript_base();
    XScript_base(const XScript_base&) = delete;
    XScript_base& operator=(const XScript_base&) = delete;

    /// Translates the whole text; the result says where the last value is, null or the
    /// accumulator. debug, where given, is filled; it is not owned and stays in use. A failure
    /// leaves no program, and the text can be compiled again.
    virtual XCStoken compile(XDebugInfo* debug = nullptr);

    /// The token at a place of the text, for an editor: line from 0, column and pos in bytes. A
    /// null token for a negative argument, beyond the text, and behind the last token.
    virtual XCStoken tokenAt(int32_t line, int32_t col);
    virtual XCStoken tokenAt(int32_t pos);

    /// Runs the compiled program; with no environment, in one of its own.
    virtual HugeVariant run(const std::shared_ptr<XScriptEnv>& env);

    /// A chain of one item that names a place of the text; pos 0 is the decoder's cursor.
    virtual xstd::XExceptionItems makeError(const xstd::XSourceLocation& location,
                                            const xstd::XString& message, int32_t pos = 0) const;

    /// The program image. After a failure it is a part of one and must not run.
    const std::vector<uint8_t>& prog() const noexcept { return m_prog; }

    /// The image made ready to run, shared by all runs and closures. Fails with "Not a script"
    /// ("scriptRuntime") where no compilation has succeeded.
    std::shared_ptr<const XScriptProgram> program();

protected:
    XScript_base();

    /// The bytes that the builder writes to.
    std::vector<uint8_t>* image() noexcept { return &m_prog; }
    /// Both stay the caller's and outlive every use of this object.
    void attach(XScriptDecoder* decoder, XScriptBuilder* builder) noexcept;

private:
    class Nesting;
    struct Evaluation;
    struct LoopPlaces;
    using TokenTexts = std::vector<std::pair<const char*, xstd::XString>>;

    // Entries of m_modStack that are no slots.
    static constexpr int16_t modulusNone = -1; ///< literals are plain
    static constexpr int16_t modulusOff = -2;  ///< plain, and stay so in a scope around them

    // The object and its stack: XScript.cpp; program and run: XScriptRun.cpp
    void reset();
    XCStoken compileText();
    void writeMaxStack();
    XCStoken nextToken();
    template <class Passed>
    XCStoken tokenUntil(Passed passed);
    /// Puts a token back: the next one read is it again.
    void putBack(const XCStoken& token);
    xstd::XExceptionItem errorItem(const xstd::XSourceLocation& location,
                                   const xstd::XString& message, int32_t pos) const;
    xstd::XExceptionItems tokenError(const xstd::XSourceLocation& location,
                                     const xstd::XString& message, const XCStoken& token,
                                     const TokenTexts& details = {}) const;
    XStackInfo& frame() noexcept;
    uint16_t takeSlot(const std::string& name);
    XCStoken push(XCStoken value);
    XCStoken pushNull();
    XCStoken declareVar(const XCStoken& name);
    void popTo(size_t count, bool force);
    void giveModulus(XCStoken& literal) const;
    XCStoken resolveName(const XCStoken& name);
    void checkTok(const XCStoken& token, const char* expected) const;
    int32_t line() const;
    void writeOp(xop_type op);
    void writeOp(const XCStoken& operatorTok);
    void writeTok(const XCStoken& token);
    void writeInt(int64_t value);
    static bool isReference(const XCStoken& value) noexcept;
    void writeMove(const XCStoken& target, const XCStoken& value);
    void moveToAx(XCStoken& value);
    int32_t writeJump(int32_t target = 0);
    int32_t writeJumpIf(xop_type op, const XCStoken& condition);
    void patch(const std::vector<int32_t>& operands, int32_t value);
    void patchToEnd(const std::vector<int32_t>& operands);

    // Expressions: XScriptExpression.cpp
    XCStoken evalWhole(XCStoken& nextTok);
    XCStoken eval(int16_t minPrec, XCStoken& nextTok);
    void requireOperator(const XCStoken& token) const;
    void evalStep(Evaluation& e);
    void keepSafe(Evaluation& e);
    void evalMember(Evaluation& e);
    void evalCall(Evaluation& e);
    void evalLazy(Evaluation& e);
    void evalBinary(Evaluation& e);
    void flushLazy(Evaluation& e);
    void evalPrefix(Evaluation& e);
    void evalBracket(Evaluation& e);
    void leaveFrame(XCStoken& data, size_t mark);
    XCStoken getData(XCStoken& nextTok);
    XCStoken getLabelData(const XCStoken& label, XCStoken& nextTok);
    int32_t getParams(const XCStoken& open, XCStoken& nextTok);
    XCStoken compileModular();
    int16_t compileModulus();
    XCStoken compileIif();
    void requireIifTok(const XCStoken& token, const char* expected) const;

    // Statements: XScriptStatement.cpp
    XCStoken compileBlock(XCStoken& nextTok, bool single, bool popAtEnd);
    bool compileStatement(XCStoken& result, XCStoken& nextTok, size_t mark);
    bool compileWord(const XCStoken& word, XCStoken& result, XCStoken& nextTok, size_t mark);
    XCStoken compileExpression(const XCStoken& first);
    XCStoken compileBraces();
    void compileBody(XCStoken& nextTok);
    XCStoken compileVar(XCStoken& nextTok);
    XCStoken compileDeclarator(XCStoken& nextTok);
    void compileReturn(XCStoken& nextTok, size_t mark);
    void compileLoopJump(const XCStoken& word);
    void compileIf();
    XCStoken compileCondition(bool popAtEnd);
    void compileFor();
    LoopPlaces compileForHead(size_t loopFrame);
    void requireSemicolon(const XCStoken& token) const;
    XCStoken compileClosure();
    ClosureVarInfo& openClosure();
    xstd::XExceptionItems closureParamError(const XCStoken& token) const;

    std::vector<uint8_t> m_prog;
    XScriptDecoder* m_decoder = nullptr;
    XScriptBuilder* m_builder = nullptr;
    std::vector<int16_t> m_modStack; ///< open modulus scopes: slot, -1 plain, -2 switched off
    XStackInfo m_stack;
    std::vector<XLoopInfo> m_loops;
    std::deque<ClosureVarInfo> m_closures; // a deque: frames stay where they are
    XDebugInfo* m_debugInfo = nullptr;
    int32_t m_depth = 0;
    bool m_compiled = false;
    std::shared_ptr<const XScriptProgram> m_program;
};

/// A script of its own, over plain names.
class XScript final : public XScript_base {
public:
    explicit XScript(const xstd::XString& text);

private:
    XScriptDecoder m_textDecoder;
    XScriptBuilder m_imageBuilder;
};

} // namespace huge
