#pragma once

// Numbers of the selection forms' resources (selection/Selection.rc).
#define IDD_SELECCION 200
#define IDC_CMD0 201
#define IDC_CMD1 202
#define IDC_CMD2 203
#define IDC_CMD3 204
