#include "com/WinHeaders.h"

#include <commdlg.h>

#include "frame/GridForm.h"
#include "frame/Lookup.h"
#include "win/MousePointer.h"

// The look of the grid: font and columns, and the file that keeps them.
namespace tamvelo::frame {

bool GridForm::LoadLook() {
    bool kept = false;
    DataGrid().DefaultLook();
    Tried([&] {
        std::wstring note;
        const std::optional<base::GridLayout> saved = m_layoutStore.Load(note);
        NoteLayout(std::move(note));
        if (saved) {
            DataGrid().Apply(*saved);
            kept = true;
        }
    });
    return kept;
}

void GridForm::SaveLook() {
    m_lookChanged = false;
    m_layoutStore.Save(DataGrid().Layout());
}

void GridForm::CambiarFuenteGrid() {
    LOGFONTW font = DataGrid().Font();
    CHOOSEFONTW choice{};
    choice.lStructSize = sizeof choice;
    choice.hwndOwner = Window();
    choice.lpLogFont = &font;
    choice.Flags = CF_SCREENFONTS | CF_INITTOLOGFONTSTRUCT | CF_NOVERTFONTS | CF_NOSCRIPTSEL;
    win::MousePointer::Default();
    if (ChooseFontW(&choice) && IsLoaded()) {
        DataGrid().SetFont(font);
        SaveLook();
    }
}

void GridForm::ChooseColumns() {
    com::LateObject server = NewShowSerch();
    server.Call(L"ShowColums", {m_relay->Sink(), DataGrid().Columns().Get()});
}

void GridForm::clsMeEvents_ConfigurarColumnas() { SaveLook(); }

void GridForm::FitColumn() {
    if (const short column = DataGrid().CurrentColumn(); column >= 0) {
        DataGrid().FitColumn(column);
        LayoutChanged();
    }
}

void GridForm::LayoutChanged() { m_lookChanged = true; }

} // namespace tamvelo::frame
