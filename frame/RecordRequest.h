#pragma once

#include <string>
#include <string_view>

#include "contract/DataClass.h"
#include "contract/HostControl.h"
#include "contract/Sink.h"
#include "frame/FormPart.h"

namespace tamvelo::frame {

/// What a host opens a form with a grid with: its data class, its sink, the control that wants a record, and
/// numbers of its own. Kept until the form unloads.
class RecordRequest final : public FormPart {
public:
    explicit RecordRequest(Form& form) : FormPart(form) {}

    /// Within a show method: the way in which forms with a grid open as a rule, with the records of
    /// "seleccion".
    void Mostrar(IDispatch* hostSink, IDispatch* hostData, contract::HostControl& caller, short columnAsked,
                 short numberAsked, bool find);
    /// Keeps the host's objects and reads the class name.
    void Take(IDispatch* hostSink, IDispatch* hostData, const contract::HostControl& hostControl,
              short columnAsked, short numberAsked);
    /// Asks for the selection's records and stands on the one that the host's control names, if asked to.
    void OpenRecords(std::wstring_view selection, bool find);
    /// Shows the form, modeless for 0. While a modal one is open, a control that the host puts in place of
    /// its own gets into `caller`, the variable that the host's call came with.
    void ShowFor(contract::HostControl& caller, short modal);
    void TakeControlBack();
    /// Hands the host's number and control to a member that the sink may have; whether it has.
    bool Offer(const wchar_t* member) { return sink.Offer(member, indx, control.Reference()); }
    /// The short answer: the column and one value.
    void SendValue(const com::Variant& value) { sink.AceptarSeleccion(column, control.Reference(), value); }

    contract::Sink sink;
    contract::DataClass data;
    contract::HostControl control;
    std::wstring className;
    // The host's own; a sink may change the one that it is called with.
    short column = 0;
    short indx = 0;

private:
    void OnUnload() noexcept override;

    contract::HostControl* m_caller = nullptr; // while its call waits for us
};

} // namespace tamvelo::frame
