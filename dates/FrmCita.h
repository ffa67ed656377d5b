#pragma once

#include <array>
#include <memory>
#include <optional>
#include <string>

#include "contract/DataClass.h"
#include "contract/Sink.h"
#include "frame/Form.h"
#include "objects/EventRelay.h"
#include "win/EditWatch.h"

namespace tamvelo::dates {

/// A new appointment: day, hour, customer, employee, box, type and comment, kept by a component of the
/// environment. Modeless, above the host's window; the host's sink hears of its end, saved or not.
class FrmCita final : public frame::Form {
public:
    static constexpr wchar_t kName[] = L"frmCita";
    FrmCita();

    /// `owner` is the window that the form stays above, `date` the day to begin with. While the form is open
    /// it comes to the front as it is, and what is given is not looked at. Throws com::Error when it cannot
    /// open; what fails while it is open goes to ControlErrores.
    void Mostrar(IDispatch* sink, IDispatch* data, HWND owner, DATE date);

private:
    struct Person;
    struct Search;
    /// What was last read for a code, so that the host is asked once and a name of the user's own stays.
    struct Known {
        std::wstring code;
        std::optional<std::wstring> name;
        std::shared_ptr<win::EditWatch> watch;
    };

    void Aceptar();
    void Buscar(int control);
    void LeerCodigo(int box);
    void Salir();

    static const Search* SearchAt(int control);
    void LookUp(const Search& search);
    void clsMeEvents_AceptaSeleccion(com::Invocation& call);
    void clsMeEvents_AceptaSeleccionParam(com::Invocation& call);
    void Answered(com::Invocation& call, const std::wstring& code, const std::optional<std::wstring>& name);
    /// True when the box holds the code of a record.
    bool FillName(const Person& person);
    Known& Of(const Person& person);
    void MoveFocus(int control);

    base::Day Day() const;
    int Minute() const;
    void SetTime(const SYSTEMTIME& time);
    void StepHour(int direction);
    void Later() { StepHour(1); }
    void Earlier() { StepHour(-1); }
    void NewLine();
    void SetDay(DATE date);
    void ShowDay();

    void OnLoad() override;
    void OnUnload() noexcept override;
    bool OnNotify(NMHDR& header, LRESULT& answer) override;
    bool Offers(std::wstring_view command, int control) const override;
    std::span<const frame::CommandRow> Commands() const override;
    std::vector<win::LayoutRow> Layout() const override;
    HWND FirstFocus() const override;

    static const std::array<Person, 2> kPersons;
    static const std::array<Search, 4> kSearches;

    contract::Sink m_objClsEvents;
    contract::DataClass m_myClase;
    std::wstring m_className;
    std::unique_ptr<objects::OwnRelay> m_clsMeEvents; // hears the look-ups
    std::array<Known, 2> m_known;
    bool m_answered = false;
    win::UniqueIcon m_glyph; // the buttons do not own it
};

} // namespace tamvelo::dates
