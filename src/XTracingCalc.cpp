#include "XTracingCalc.h"

#include "XCellTableView.h"
#include "XTablePage.h"
#include "cell/XCellActionSetText.h"
#include "qtText.h"
#include "tavix.h"

#include <stdexcept>

XTracingCalc::XTracingCalc(tavix* owner, const QCursor& cursor, const char* function)
    : XTracingAction(owner, cursor),
      m_text(function + ("(" + toXString(owner->currentPage()->rangeText(false)) + ")"))
{}

void XTracingCalc::fire()
{
    const xstd::XMergedRects target = owner()->currentView()->selectedRects();
    if (target.size() != 1 || target[0].area() != 1)
        throw std::runtime_error("You can only put the calculation results in one cell");
    owner()->perform(std::make_unique<huge::XCellActionSetText>(
        &owner()->currentPage()->table(), target[0].top, target[0].left, m_text, false));
}
