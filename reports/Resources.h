#pragma once

// Numbers of the report dialogs' resources (reports/Reports.rc).
#define IDD_REPORT 500
#define IDC_LBLSELEC 501
#define IDC_LBLNOTE 502
#define IDC_CMBSELEC 503
#define IDC_LBLCOPIAS 504
#define IDC_TXTCOPIAS 505
#define IDC_SPINCOPIAS 506
#define IDC_CMDPRINTER 507
#define IDC_LBLPRINTER 508
#define IDC_LBLPERIODO 509

// The conditions are made from each dialog's description: four numbers for each.
#define IDC_CONDITIONS 520
