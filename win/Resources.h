#pragma once

// Numbers of the resources that this room has of its own (win/Win.rc).
#define IDI_TAMVELO 1
#define IDD_SCROLL_PANEL 49
