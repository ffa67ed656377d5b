#pragma once

#include <functional>
#include <memory>
#include <string_view>

namespace tamvelo::frame {

class Form;

/// The default instances of the forms: one of each per thread, made on first use and forgotten when it
/// unloads.
class FormInstances {
public:
    static std::shared_ptr<Form> Obtain(std::wstring_view name,
                                        const std::function<std::shared_ptr<Form>()>& make);
    /// Forgets the calling thread's instance if it is still this one.
    static void Forget(const Form& form) noexcept;
    /// Destroys the windows of all of the calling thread's instances, and forgets them.
    static void CloseThread() noexcept;
};

/// The calling thread's instance of a form class, which names itself in `kName`.
template <class F>
std::shared_ptr<F> DefaultInstance() {
    return std::static_pointer_cast<F>(FormInstances::Obtain(F::kName, [] { return std::make_shared<F>(); }));
}

/// The same of one that a design, which has its name, makes into a certain dialog.
template <class F, class Design>
std::shared_ptr<F> InstanceOf(const Design& design) {
    return std::static_pointer_cast<F>(
        FormInstances::Obtain(design.name, [&] { return std::make_shared<F>(design); }));
}

} // namespace tamvelo::frame
