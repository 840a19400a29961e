#pragma once

#include "script/XScript.h"

namespace huge {

/// One level of nesting of the compiler, for as long as it lives. The compiler recurses as deep as
/// its text nests, so levels are counted, and the machine stack is asked too: what a level takes of
/// it depends on the build, and on what stands in the level.
class XScript_base::Nesting {
public:
    /// Fails with "The script is nested too deep".
    explicit Nesting(XScript_base& script);
    ~Nesting() { --m_script.m_depth; }
    Nesting(const Nesting&) = delete;
    Nesting& operator=(const Nesting&) = delete;

private:
    XScript_base& m_script;
};

} // namespace huge
