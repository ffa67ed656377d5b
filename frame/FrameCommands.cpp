#include "frame/FrameCommands.h"

#include "base/Commands.h"
#include "frame/Form.h"
#include "win/MousePointer.h"

namespace tamvelo::frame {

std::span<const KeyRow> FrameCommands::Keys() const {
    static constexpr KeyRow kKeys[] = {
        {0, VK_RETURN, base::kAceptar},
        {0, VK_ESCAPE, base::kCancelar},
        {0, VK_INSERT, kNoCommand},
        {0, VK_DELETE, kNoCommand},
        {0, VK_F6, kCustomizeToolbar},
        {0, VK_F8, kEditingBandOnly},
        {0, kByControl | kAlt | VK_F4, base::kCerrar}, // the system closes the window
        {kAnyControl, VK_F4, kLookUp},
        {kAnyControl, kAltDown, kLookUp},
        {kAnyControl, kClick, kLookUp},
    };
    return kKeys;
}

std::span<const CommandRow> FrameCommands::Commands() const {
    using F = FrameCommands;
    static constexpr CommandRow kCommands[] = {
        {base::kCancelar, Do<&F::Close>},
        {base::kCerrar, Do<&F::Close>},
        {kTabKey, Do<&F::GoToNextControl>},
        {kCustomizeToolbar, Do<&F::CustomizeToolbar>},
        {kEditingBandOnly, Do<&F::ShowEditingBandOnly>},
    };
    return kCommands;
}

void FrameCommands::Close() { m_form.Unload(); }

void FrameCommands::GoToNextControl() { SendMessageW(m_form.Window(), WM_NEXTDLGCTL, 0, FALSE); }

void FrameCommands::CustomizeToolbar() {
    win::MousePointer::Default();
    m_form.Bar().Customize();
}

void FrameCommands::ShowEditingBandOnly() {
    m_form.Bar().SetBandVisible(base::kBandRegistros, false);
    m_form.Bar().SetBandVisible(base::kBandRegistro, false);
    m_form.Bar().SetBandVisible(base::kBandEdicion, true);
    m_form.Relayout();
}

} // namespace tamvelo::frame
