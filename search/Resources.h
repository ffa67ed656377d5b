#pragma once

// Numbers of the record browser's resources (search/Registros.rc).
#define IDD_REGISTROS 340
