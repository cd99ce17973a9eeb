#include <SDL.h>
#include <sys/sysinfo.h>

#include <cstdlib>

#include "platform/platform.h"

namespace Platform {

namespace {
bool displayAvailable() {
    return std::getenv("DISPLAY") || std::getenv("WAYLAND_DISPLAY");
}
}  // namespace

void showMessage(const char* text, const char* caption) {
    if (displayAvailable() &&
        SDL_ShowSimpleMessageBox(SDL_MESSAGEBOX_INFORMATION, caption, text, nullptr) == 0)
        return;
    std::fprintf(stderr, "%s\n%s\n", caption, text);
    std::fflush(stderr);
}

MemoryStatus memoryStatus() {
    MemoryStatus status;
    struct sysinfo info {};
    if (sysinfo(&info) == 0) {
        status.totalPhysical = uint64_t{info.totalram} * info.mem_unit;
        status.availablePhysical = (uint64_t{info.freeram} + info.bufferram) * info.mem_unit;
    }
    return status;
}

}  // namespace Platform
