// In every copy of the product's code that tools/plant.py builds: is the fault of this place chosen? In the
// recording run (see Listener.cpp) it also notes that the place was reached.
#include <windows.h>

#include <cstdlib>

bool Planted(int place) noexcept {
    // No guarded statics: the library's own start-up code may be the caller.
    static int chosen = -1;
    static volatile char* reached = nullptr;
    if (chosen < 0) {
        char number[16] = "";
        GetEnvironmentVariableA("TAMVELO_PLANTED", number, sizeof number);
        if (const HANDLE section = OpenFileMappingA(FILE_MAP_WRITE, FALSE, "TamveloPlanted")) {
            reached = static_cast<char*>(MapViewOfFile(section, FILE_MAP_WRITE, 0, 0, 0));
            CloseHandle(section);
        }
        chosen = std::atoi(number);
    }
    if (reached) {
        reached[place] = 1;
    }
    return place == chosen;
}
