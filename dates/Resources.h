#pragma once

// Numbers of the date forms' resources (dates/Dates.rc).
#define IDD_SELECCIONFECHA 400

#define IDD_CITA 420
#define IDC_DTPICHORA 421
#define IDC_MTHVFECHA 422
#define IDC_LBLDIA 423
// The text boxes, by their place in the control array TxtFields.
#define IDC_TXTCITA10 424
#define IDC_TXTCITA0 425
#define IDC_TXTCITA14 426
#define IDC_TXTCITA6 427
#define IDC_TXTCITA1 428
#define IDC_TXTCITA13 429
#define IDC_TXTCITA15 430
// The look-ups beside them (CmdSerch).
#define IDC_CMDCITA10 431
#define IDC_CMDCITA0 432
#define IDC_CMDCITA6 433
#define IDC_CMDCITA15 434
// The labels of the rows (LblFields).
#define IDC_LBLCITA0 435
#define IDC_LBLCITA1 436
#define IDC_LBLCITA2 437
#define IDC_LBLCITA3 438
#define IDC_LBLCITA4 439
#define IDC_LBLCITA5 440
#define IDC_LBLAVISO 441
