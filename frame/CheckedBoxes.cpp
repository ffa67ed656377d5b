#include "frame/CheckedBoxes.h"

#include <algorithm>

#include "base/SearchModes.h"
#include "win/WindowText.h"

namespace tamvelo::frame {

namespace {

bool IsAsked(const CheckedBoxes::Hooks& hooks) { return !hooks.checked || hooks.checked(); }

} // namespace

void CheckedBoxes::Add(com::ComPtr<objects::ControlObject> object, Hooks hooks) {
    const auto box = std::make_shared<Box>(Box{std::move(object), std::move(hooks), nullptr});
    win::EditWatch::Handlers handlers;
    // The box owns its watch: held weakly, neither keeps the other.
    handlers.typed = [this, held = std::weak_ptr(box)](wchar_t& letter) {
        if (const auto kept = held.lock()) {
            Host().Trapped([&] { Typed(*kept, letter); });
        }
    };
    handlers.left = [this, held = std::weak_ptr(box)] {
        const auto kept = held.lock();
        return !kept || Left(*kept);
    };
    if (box->hooks.pasted) {
        handlers.pasted = [this, held = std::weak_ptr(box)](const std::wstring& text) {
            bool used = false;
            if (const auto kept = held.lock()) {
                Host().Trapped([&] { used = kept->hooks.pasted(text); });
            }
            return used;
        };
    }
    box->watch = win::EditWatch::Start(box->object->Window(), std::move(handlers));
    m_boxes.push_back(box);
}

void CheckedBoxes::Typed(const Box& box, wchar_t& letter) {
    if (IsAsked(box.hooks)) {
        auto key = static_cast<short>(letter);
        const bool kept = m_data.ValidaKey(box.object, key);
        letter = kept ? static_cast<wchar_t>(static_cast<unsigned short>(key)) : L'\0';
    }
}

bool CheckedBoxes::Left(const Box& box) {
    bool valid = true; // what cannot be checked does not hold the user
    Host().Tried([&] { valid = Judge(box); });
    return valid;
}

bool CheckedBoxes::Judge(const Box& box) {
    if (!IsAsked(box.hooks)) {
        return true;
    }
    const HWND edit = box.object->Window();
    const long size = m_data.ValidaDefinedSize(box.object);
    if (!IsLoaded()) {
        return true;
    }
    const std::wstring text = win::TextOf(edit);
    const std::wstring kept = base::TrimmedTo(text, size);
    if (kept != text) {
        SetWindowTextW(edit, kept.c_str());
    }
    const bool valid = m_data.ValidaValue(box.object);
    if (IsLoaded()) {
        SendMessageW(edit, EM_SETMODIFY, !valid, 0);
        if (box.hooks.judged) {
            box.hooks.judged(valid);
        }
    }
    return valid;
}

bool CheckedBoxes::Settle() {
    const auto boxes = m_boxes; // the form may go while the host looks at a value
    return std::ranges::all_of(boxes, [](const auto& box) { return box->watch->Settle(); }) && IsLoaded();
}

bool CheckedBoxes::SettleAll() {
    if (!Settle()) {
        return false;
    }
    const auto typedInto = std::ranges::find_if(m_boxes, [](const auto& box) {
        const HWND edit = box->object->Window();
        return edit == GetFocus() && SendMessageW(edit, EM_GETMODIFY, 0, 0) != 0;
    });
    if (typedInto == m_boxes.end()) {
        return true;
    }
    const std::shared_ptr<Box> kept = *typedInto;
    return Left(*kept) && IsLoaded();
}

} // namespace tamvelo::frame
