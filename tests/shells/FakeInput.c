// A mouse and keyboard for a KDE Plasma session: KWin's fake-input protocol,
// whose events KWin handles as it handles a real device's (pointer focus,
// implicit grabs, popups, focus on click). KWin lets a program use it only
// when a desktop entry naming that program lists the interface in
// X-KDE-Wayland-Interfaces.
//
// Reads one command a line on standard input and answers "ok" once KWin has
// taken it (after a round trip), or "error ..." on a line it cannot read:
//   move X Y          pointer to X,Y of the workspace (absolute)
//   button CODE 1|0   press or release a button (Linux codes: left 272, right 273)
//   key CODE 1|0      press or release a key (Linux key codes)
// One connection for the whole test: the device KWin makes for it then
// stays the same, as a mouse plugged in for the session does.
#define _GNU_SOURCE
#include "fake-input-client-protocol.h"

#include <stdint.h>
#include <stdio.h>
#include <string.h>
#include <wayland-client.h>

struct helper
{
    struct org_kde_kwin_fake_input *input;
    uint32_t version;
};

static void global(void *data, struct wl_registry *registry, uint32_t name, const char *interface,
                   uint32_t version)
{
    struct helper *helper = data;
    if (strcmp(interface, org_kde_kwin_fake_input_interface.name) == 0 && version >= 4) {
        helper->version = 4;
        helper->input = wl_registry_bind(registry, name, &org_kde_kwin_fake_input_interface, 4);
    }
}

static void global_remove(void *data, struct wl_registry *registry, uint32_t name)
{
    (void)data;
    (void)registry;
    (void)name;
}

static const struct wl_registry_listener registry_listener = {.global = global,
                                                              .global_remove = global_remove};

static int perform(struct helper *helper, const char *line)
{
    double x = 0, y = 0;
    unsigned code = 0, state = 0;
    if (sscanf(line, "move %lf %lf", &x, &y) == 2)
        org_kde_kwin_fake_input_pointer_motion_absolute(helper->input, wl_fixed_from_double(x),
                                                        wl_fixed_from_double(y));
    else if (sscanf(line, "button %u %u", &code, &state) == 2 && state <= 1)
        org_kde_kwin_fake_input_button(helper->input, code, state);
    else if (sscanf(line, "key %u %u", &code, &state) == 2 && state <= 1)
        org_kde_kwin_fake_input_keyboard_key(helper->input, code, state);
    else
        return 0;
    return 1;
}

int main(void)
{
    struct wl_display *display = wl_display_connect(NULL);
    if (!display) {
        fprintf(stderr, "no Wayland display to connect to\n");
        return 1;
    }
    struct helper helper = {0};
    struct wl_registry *registry = wl_display_get_registry(display);
    wl_registry_add_listener(registry, &registry_listener, &helper);
    wl_display_roundtrip(display);
    if (!helper.input) {
        // KWin hides the interface from a program its desktop entry does not allow.
        fprintf(stderr, "the compositor offers no org_kde_kwin_fake_input (version 4) to this "
                        "program\n");
        return 1;
    }
    org_kde_kwin_fake_input_authenticate(helper.input, "ZQB shell tests",
                                         "drives the desktop in the app's tests");
    if (wl_display_roundtrip(display) < 0) {
        fprintf(stderr, "the compositor refused the fake-input device\n");
        return 1;
    }
    printf("ready\n");
    fflush(stdout);

    char line[256];
    while (fgets(line, sizeof line, stdin)) {
        if (!perform(&helper, line)) {
            printf("error: cannot read %s", line);
        } else if (wl_display_roundtrip(display) < 0) {
            fprintf(stderr, "the compositor closed the connection\n");
            return 1;
        } else {
            printf("ok\n");
        }
        fflush(stdout);
    }
    wl_display_disconnect(display);
    return 0;
}
