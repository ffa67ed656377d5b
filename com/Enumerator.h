#pragma once

#include <algorithm>
#include <vector>

#include "com/Object.h"

namespace tamvelo::com {

/// COM's enumerator over items that were collected when it was made. `Keep` takes what an item needs to be
/// handed out (a reference), `Drop` gives it back; both are functions over `Item&`.
template <class Interface, class Item, auto Keep, auto Drop>
class Enumerator final : public Object<Interface> {
public:
    explicit Enumerator(std::vector<Item> items, size_t at = 0) : m_items(std::move(items)), m_at(at) {
        for (Item& item : m_items) {
            Keep(item);
        }
    }
    ~Enumerator() override {
        for (Item& item : m_items) {
            Drop(item);
        }
    }

    HRESULT STDMETHODCALLTYPE Next(ULONG count, Item* out, ULONG* fetched) override {
        if (!out || (count > 1 && !fetched)) {
            return E_POINTER;
        }
        ULONG given = 0;
        for (; given < count && m_at < m_items.size(); ++given, ++m_at) {
            out[given] = m_items[m_at];
            Keep(out[given]);
        }
        if (fetched) {
            *fetched = given;
        }
        return given == count ? S_OK : S_FALSE;
    }
    HRESULT STDMETHODCALLTYPE Skip(ULONG count) override {
        const size_t left = m_items.size() - m_at;
        m_at += std::min<size_t>(count, left);
        return count <= left ? S_OK : S_FALSE;
    }
    HRESULT STDMETHODCALLTYPE Reset() override {
        m_at = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Clone(Interface** out) override {
        if (!out) {
            return E_POINTER;
        }
        *out = nullptr;
        try {
            *out = Make<Enumerator>(m_items, m_at).Detach();
            return S_OK;
        } catch (...) {
            return E_OUTOFMEMORY;
        }
    }

private:
    std::vector<Item> m_items;
    size_t m_at;
};

} // namespace tamvelo::com
