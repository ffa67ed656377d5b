#include "grid/RecordClone.h"

#include "com/Error.h"

namespace tamvelo::grid {

namespace {

constexpr short kReadOnlyLock = 1;

} // namespace

com::LateObject& RecordClone::Reader() {
    if (!m_tried) {
        m_tried = true;
        Make();
    }
    if (m_clone) {
        return m_clone;
    }
    return m_host;
}

void RecordClone::Make() {
    com::ComPtr<IDispatch> made;
    try {
        made = m_host.Call(L"Clone", {kReadOnlyLock}).ToObject();
    } catch (const com::Error&) {
        try {
            made = m_host.Call(L"Clone").ToObject();
        } catch (const com::Error&) {
            return;
        }
    }
    m_isHost = com::SameObject(made.Get(), m_host.Get());
    if (made && !m_isHost) {
        m_clone = com::LateObject(made.Get(), L"Clone");
        // One that cannot be told the host's filter and order has others as soon as these cannot be seen to
        // be the same.
        if (!m_host.Align(m_clone) || !m_host.TellsRows() || (m_ordered && !m_host.TellsOrder())) {
            m_clone.Reset();
        }
    }
}

void RecordClone::Drop() {
    m_clone.Reset();
    m_fields.clear();
    m_tried = m_givenUp;
}

void RecordClone::Follow() {
    if (m_clone && !m_host.Align(m_clone)) {
        Drop();
    }
}

void RecordClone::Reordered() {
    m_ordered = true;
    m_isFresh = false;
    Drop();
}

bool RecordClone::LeaveIt() {
    if (m_givenUp) {
        return false;
    }
    m_givenUp = !m_clone || m_isFresh;
    m_isFresh = true;
    Drop();
    return true;
}

} // namespace tamvelo::grid
