// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Pseudo terminals have no modem lines. This stands in front of ioctl, answers for them, and appends each change to the
// file that TORDILLO_MODEM_LINES names: "<nanoseconds, monotonic> <device> <RTS|DTR> <0|1>". While a file of that name
// with ".gone" behind it exists, every order is refused as by an adapter that was pulled out.

#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <fcntl.h>
#include <string>
#include <sys/ioctl.h>
#include <sys/syscall.h>
#include <termios.h>
#include <unistd.h>
#include <utility>

namespace {

constexpr int lines = TIOCM_RTS | TIOCM_DTR;
// Opening a real port raises both.
int states[1024];
bool seen[1024];

std::string DeviceOf(int handle)
{
    char name[256];
    const ssize_t length = readlink(("/proc/self/fd/" + std::to_string(handle)).c_str(), name, sizeof name);
    return {name, length > 0 ? size_t(length) : 0};
}

void Record(const timespec &now, int handle, int before, int after)
{
    static const char *const path = std::getenv("TORDILLO_MODEM_LINES");
    if (!path)
        return;
    static const int file = open(path, O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0644);
    const std::string device = DeviceOf(handle);
    for (const auto &[bit, name] : {std::pair{TIOCM_RTS, "RTS"}, std::pair{TIOCM_DTR, "DTR"}})
        if ((before ^ after) & bit)
            dprintf(file, "%lld %s %s %d\n", static_cast<long long>(now.tv_sec) * 1'000'000'000 + now.tv_nsec,
                device.c_str(), name, after & bit ? 1 : 0);
}

bool IsGone()
{
    static const char *const path = std::getenv("TORDILLO_MODEM_LINES");
    static const std::string mark = path ? std::string(path) + ".gone" : std::string();
    return !mark.empty() && access(mark.c_str(), F_OK) == 0;
}

int Answer(int handle, unsigned long request, int *bits)
{
    timespec now{}; // of the order, not of what this library does with it
    clock_gettime(CLOCK_MONOTONIC, &now);
    if (IsGone()) {
        errno = EIO;
        return -1;
    }
    int &state = states[handle];
    if (!std::exchange(seen[handle], true))
        state = lines;
    const int before = state;
    if (request == TIOCMGET)
        *bits = state;
    else if (request == TIOCMBIS)
        state |= *bits & lines;
    else if (request == TIOCMBIC)
        state &= ~*bits;
    else
        state = *bits & lines;
    Record(now, handle, before, state);
    return 0;
}

} // namespace

extern "C" int ioctl(int handle, unsigned long request, ...) noexcept
{
    va_list arguments;
    va_start(arguments, request);
    void *const argument = va_arg(arguments, void *);
    va_end(arguments);
    const bool modem = request == TIOCMGET || request == TIOCMSET || request == TIOCMBIS || request == TIOCMBIC;
    if (modem && handle >= 0 && handle < 1024 && isatty(handle))
        return Answer(handle, request, static_cast<int *>(argument));
    if (request == TIOCEXCL && handle >= 0 && handle < 1024)
        seen[handle] = false; // just opened
    return static_cast<int>(syscall(SYS_ioctl, handle, request, argument));
}
