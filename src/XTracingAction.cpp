#include "XTracingAction.h"

XTracingAction::XTracingAction(tavix* owner, const QCursor& cursor)
    : m_owner(owner), m_toolCursor(cursor)
{}

XTracingAction::~XTracingAction() = default;
