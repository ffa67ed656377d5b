#pragma once

// Numbers of the resources that all forms share (frame/Frame.rc), and of the controls that every grid form
// has.
#define IDB_TOOLBAR16 16
#define IDB_TOOLBAR24 24
#define IDB_TOOLBAR32 32

#define IDD_RECORD 50
#define IDC_RECORD_LIST 51
#define IDC_RECORD_VALUE 52
#define IDC_RECORD_LABEL 53

#define IDC_LBLTABLE 60
#define IDC_LBLBUSCAR 61
#define IDC_TXTFIELDS0 62
#define IDC_CMDBUSCAR 63
#define IDC_DATAGRID 64
#define IDC_STATUS 65

// The controls that every list form has (frame/ListPanel.rch).
#define IDC_LIST1 80
#define IDC_LBLLIST1 81
#define IDC_LBLFILTRO 82
#define IDC_TXTFILTRO 83
#define IDC_LBLCUENTA 84
#define IDC_CMDMARCAS 85
// Of every form with conditions: their frame, and the range of dates in it.
#define IDC_FRMPARAM 70
#define IDC_LBLFECHA0 71
#define IDC_DTPICKER0 72
#define IDC_LBLFECHA1 73
#define IDC_DTPICKER1 74
#define IDC_CMDPERIODO 75
#define IDC_LBLINTERVALO 76
