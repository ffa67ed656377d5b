#include "frame/FormInstances.h"

#include <map>
#include <mutex>
#include <string>

#include "base/NeverDestroyed.h"
#include "com/ApartmentEnd.h"
#include "frame/Form.h"

namespace tamvelo::frame {

namespace {

using Key = std::pair<DWORD, std::wstring>;

std::mutex g_lock;

std::map<Key, std::shared_ptr<Form>>& Instances() {
    // A form left open at process end must not run its teardown after its host.
    static base::NeverDestroyed<std::map<Key, std::shared_ptr<Form>>> instances;
    return *instances;
}

/// Any of the calling thread's instances, no longer among them; null when there is none.
std::shared_ptr<Form> TakeOne() {
    const DWORD thread = GetCurrentThreadId();
    const std::scoped_lock lock(g_lock);
    const auto found = Instances().lower_bound(Key{thread, {}});
    if (found == Instances().end() || found->first.first != thread) {
        return nullptr;
    }
    std::shared_ptr<Form> taken = std::move(found->second);
    Instances().erase(found);
    return taken;
}

} // namespace

std::shared_ptr<Form> FormInstances::Obtain(std::wstring_view name,
                                            const std::function<std::shared_ptr<Form>()>& make) {
    com::ApartmentEnd::Watch(com::ApartmentEnd::What::Forms, CloseThread);
    const Key key{GetCurrentThreadId(), std::wstring(name)};
    {
        const std::scoped_lock lock(g_lock);
        const auto found = Instances().find(key);
        if (found != Instances().end()) {
            return found->second;
        }
    }
    std::shared_ptr<Form> made = make(); // outside the lock; no other thread makes this key
    const std::scoped_lock lock(g_lock);
    return Instances().emplace(key, std::move(made)).first->second;
}

void FormInstances::Forget(const Form& form) noexcept {
    std::shared_ptr<Form> leaving; // let go of after the lock: its end may run host code
    const std::scoped_lock lock(g_lock);
    const auto found = Instances().find(Key{GetCurrentThreadId(), form.Name()});
    if (found != Instances().end() && found->second.get() == &form) {
        leaving = std::move(found->second);
        Instances().erase(found);
    }
}

void FormInstances::CloseThread() noexcept {
    while (const std::shared_ptr<Form> form = TakeOne()) {
        if (form->IsLoaded()) {
            DestroyWindow(form->Window());
        }
    }
}

} // namespace tamvelo::frame
