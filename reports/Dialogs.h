#pragma once

#include "reports/ReportForm.h"

namespace tamvelo::reports {

// The report dialogs. Each is a page: what it shows, and which call hands its result over.

extern const ReportDesign kRpts;
extern const ReportDesign kSql;
extern const ReportDesign kSelecEti;
extern const ReportDesign kRptsListas;

extern const ReportDesign kRptsCond;
extern const ReportDesign kRptsInfCond;
extern const ReportDesign kRptsMailCond;
extern const ReportDesign kRptsCondHr;

extern const ReportDesign kRptsFchAuto;
extern const ReportDesign kRptsFchAutoInf;
extern const ReportDesign kRptsInfFch;
extern const ReportDesign kRptsFchCliDirec;

extern const ReportDesign kRptsInfOrdenes;
extern const ReportDesign kRptNumAut;

} // namespace tamvelo::reports
