#pragma once

// Numbers of the selection forms' resources (selection/Selection.rc).
#define IDD_SELECCION 200
#define IDC_CMD0 201
#define IDC_CMD1 202
#define IDC_CMD2 203
#define IDC_CMD3 204

// Numbers of the criteria dialogs' resources (selection/Criteria.rc).
#define IDD_CRITERIA 260
#define IDC_CRITERIA 261
#define IDC_FRMCOMPARISON 262
#define IDC_OPTCOMPARISON0 263
#define IDC_OPTCOMPARISON1 264
#define IDC_OPTCOMPARISON2 265
#define IDC_CMDCLEAR 266

// The fields' controls are made one after the other: four numbers for each.
#define IDC_CRITERIA_FIELDS 1000
#define IDD_TRUEFALSE 240
#define IDC_LBLTODOS 241
#define IDC_LBLNINGUNO 242
#define IDC_LBLALCANCE 243
// With the panel for a new record (selection/SelecAdd.rc).
#define IDD_SELECADD 210
#define IDC_PICNEW 211
#define IDC_LBLTABLE1 212
#define IDC_CMDNUEVO 213
#define IDC_CMDGUARDAR 214
#define IDC_CMDDESCARTAR 215
#define IDC_RECORD_PANEL 216
// The first of the boxes' controls, which are numbered on from here.
#define IDC_RECORD_BOXES 2000
