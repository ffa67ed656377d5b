#pragma once

// Numbers of the resources that this room has of its own (win/Win.rc).
#define IDD_SCROLL_PANEL 49
// Of the library (entry/Tamvelo.rc): programs that link this room have icons of their own.
#define IDI_TAMVELO 1
