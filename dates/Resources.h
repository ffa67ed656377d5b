#pragma once

// Numbers of the date forms' resources (dates/Dates.rc).
#define IDD_SELECCIONFECHA 400
