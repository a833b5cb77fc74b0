// Small X11 helper for the measurement script.
//
//   zqb-bench-x launch [--timeout SECONDS] -- PROGRAM ARGS...
//       Watches the root window for MapNotify, starts PROGRAM, and prints
//       "pid=P window=0xW exec_ns=T map_ms=M" once the first top-level window
//       that PROGRAM owns (by _NET_WM_PID) is mapped. PROGRAM keeps running.
//       exec_ns is CLOCK_MONOTONIC taken in the child just before execvp.
//   zqb-bench-x close WINDOW     asks the window to close (WM_DELETE_WINDOW)
//   zqb-bench-x unmap WINDOW     unmaps the window
//
// Everything is plain Xlib so the helper adds nothing to what it measures.
#include <X11/Xatom.h>
#include <X11/Xlib.h>

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

std::int64_t monotonicNs()
{
    timespec ts{};
    clock_gettime(CLOCK_MONOTONIC, &ts);
    return std::int64_t(ts.tv_sec) * 1000000000 + ts.tv_nsec;
}

long windowPid(Display *display, Window window)
{
    const Atom pidAtom = XInternAtom(display, "_NET_WM_PID", True);
    if (pidAtom == None)
        return -1;
    Atom type = None;
    int format = 0;
    unsigned long count = 0, after = 0;
    unsigned char *data = nullptr;
    long pid = -1;
    if (XGetWindowProperty(display, window, pidAtom, 0, 1, False, XA_CARDINAL, &type, &format,
                           &count, &after, &data) == Success &&
        data && type == XA_CARDINAL && format == 32 && count == 1)
        pid = long(*reinterpret_cast<unsigned long *>(data));
    if (data)
        XFree(data);
    return pid;
}

int ignoreErrors(Display *, XErrorEvent *)
{
    return 0;
}

int launch(int argc, char **argv)
{
    double timeoutSeconds = 30;
    int first = 0;
    for (; first < argc; ++first) {
        if (std::strcmp(argv[first], "--timeout") == 0 && first + 1 < argc)
            timeoutSeconds = std::atof(argv[++first]);
        else if (std::strcmp(argv[first], "--") == 0) {
            ++first;
            break;
        }
    }
    if (first >= argc) {
        std::fprintf(stderr, "zqb-bench-x launch: no program given\n");
        return 2;
    }

    Display *display = XOpenDisplay(nullptr);
    if (!display) {
        std::fprintf(stderr, "zqb-bench-x: cannot open display\n");
        return 2;
    }
    XSetErrorHandler(ignoreErrors); // windows may vanish while we look at them
    const Window root = DefaultRootWindow(display);
    XSelectInput(display, root, SubstructureNotifyMask);
    XSync(display, False);

    int timePipe[2];
    if (pipe(timePipe) != 0)
        return 2;
    const pid_t child = fork();
    if (child < 0)
        return 2;
    if (child == 0) {
        close(timePipe[0]);
        close(ConnectionNumber(display));
        const std::int64_t execNs = monotonicNs();
        if (write(timePipe[1], &execNs, sizeof execNs) != sizeof execNs)
            _exit(126);
        close(timePipe[1]);
        execvp(argv[first], argv + first);
        _exit(127);
    }
    close(timePipe[1]);
    std::int64_t execNs = 0;
    if (read(timePipe[0], &execNs, sizeof execNs) != sizeof execNs) {
        std::fprintf(stderr, "zqb-bench-x: child did not start\n");
        return 1;
    }
    close(timePipe[0]);

    const std::int64_t deadline = execNs + std::int64_t(timeoutSeconds * 1e9);
    pollfd pfd{ConnectionNumber(display), POLLIN, 0};
    for (;;) {
        while (XPending(display)) {
            XEvent event;
            XNextEvent(display, &event);
            if (event.type != MapNotify || event.xmap.override_redirect)
                continue;
            const std::int64_t mappedNs = monotonicNs();
            const Window window = event.xmap.window;
            if (windowPid(display, window) != long(child))
                continue;
            std::printf("pid=%ld window=0x%lx exec_ns=%lld map_ms=%.3f\n", long(child),
                        (unsigned long)window, (long long)execNs, (mappedNs - execNs) / 1e6);
            std::fflush(stdout);
            XCloseDisplay(display);
            return 0;
        }
        int status = 0;
        if (waitpid(child, &status, WNOHANG) == child) {
            std::fprintf(stderr, "zqb-bench-x: program exited before mapping a window\n");
            return 1;
        }
        const std::int64_t left = deadline - monotonicNs();
        if (left <= 0) {
            std::fprintf(stderr, "zqb-bench-x: no window mapped within %.0f s (pid %ld)\n",
                         timeoutSeconds, long(child));
            std::printf("pid=%ld window=0x0 exec_ns=%lld map_ms=nan\n", long(child),
                        (long long)execNs);
            return 1;
        }
        poll(&pfd, 1, int(left / 1000000 < 100 ? left / 1000000 + 1 : 100));
    }
}

int windowCommand(const char *command, const char *windowText)
{
    Display *display = XOpenDisplay(nullptr);
    if (!display) {
        std::fprintf(stderr, "zqb-bench-x: cannot open display\n");
        return 2;
    }
    const Window window = Window(std::strtoul(windowText, nullptr, 0));
    if (std::strcmp(command, "unmap") == 0) {
        XUnmapWindow(display, window);
    } else {
        XEvent event{};
        event.xclient.type = ClientMessage;
        event.xclient.window = window;
        event.xclient.message_type = XInternAtom(display, "WM_PROTOCOLS", False);
        event.xclient.format = 32;
        event.xclient.data.l[0] = long(XInternAtom(display, "WM_DELETE_WINDOW", False));
        event.xclient.data.l[1] = CurrentTime;
        XSendEvent(display, window, False, NoEventMask, &event);
    }
    XSync(display, False);
    XCloseDisplay(display);
    return 0;
}

} // namespace

int main(int argc, char **argv)
{
    if (argc >= 2 && std::strcmp(argv[1], "launch") == 0)
        return launch(argc - 2, argv + 2);
    if (argc == 3 && (std::strcmp(argv[1], "close") == 0 || std::strcmp(argv[1], "unmap") == 0))
        return windowCommand(argv[1], argv[2]);
    std::fprintf(stderr, "usage: zqb-bench-x launch [--timeout S] -- PROGRAM ARGS...\n"
                         "       zqb-bench-x close|unmap WINDOW\n");
    return 2;
}
