#pragma once

// Numbers of the grid configuration forms' resources (gridconfig/GridConfig.rc).
#define IDD_COLUMNAS 450
#define IDD_ORDEN 451
