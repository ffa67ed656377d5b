#pragma once

// Numbers of the search panel's resources (search/Buscar.rc).
#define IDD_BUSCAR 300
#define IDC_FRMOPTION 301
#define IDC_OPTBUSCAR0 302
#define IDC_OPTBUSCAR1 303
#define IDC_OPTBUSCAR2 304
#define IDC_OPTBUSCAR3 305
#define IDC_OPTBUSCAR4 306
#define IDC_LBLFIELDS0 307
#define IDC_LBLFIELDS1 308
#define IDC_LBLFIELDS2 309
#define IDC_TXTFIELDS1 310
#define IDC_TXTFIELDS2 311
#define IDC_LBLTIPOS 312
#define IDC_LSTTIPOS 313
#define IDC_LBLLIST2 314
#define IDC_LIST2 315
#define IDC_HUECO 316
#define IDC_CMDESTILO0 317
#define IDC_CMDESTILO1 318

// Numbers of the record browser's resources (search/Registros.rc).
#define IDD_REGISTROS 340
