// What the end-to-end tests need from a Wayland desktop besides the app:
//   zqb-e2e-wayland-helper token
//       asks the compositor for an activation token, as a launcher does
//       before it starts a program, and prints it;
//   zqb-e2e-wayland-helper window TITLE
//       maps a plain window titled TITLE, which takes the focus the way
//       any other program's window would, and keeps it until killed.
// Plain libwayland, so the tests depend on no toolkit but the app's own.
#define _GNU_SOURCE
#include "xdg-activation-v1-client-protocol.h"
#include "xdg-shell-client-protocol.h"

#include <stdint.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/mman.h>
#include <unistd.h>
#include <wayland-client.h>

struct helper
{
    struct wl_compositor *compositor;
    struct wl_shm *shm;
    struct xdg_wm_base *shell;
    struct xdg_activation_v1 *activation;
    char *token;
    int configured;
};

static void global(void *data, struct wl_registry *registry, uint32_t name, const char *interface,
                   uint32_t version)
{
    (void)version;
    struct helper *helper = data;
    if (strcmp(interface, wl_compositor_interface.name) == 0)
        helper->compositor = wl_registry_bind(registry, name, &wl_compositor_interface, 1);
    else if (strcmp(interface, wl_shm_interface.name) == 0)
        helper->shm = wl_registry_bind(registry, name, &wl_shm_interface, 1);
    else if (strcmp(interface, xdg_wm_base_interface.name) == 0)
        helper->shell = wl_registry_bind(registry, name, &xdg_wm_base_interface, 1);
    else if (strcmp(interface, xdg_activation_v1_interface.name) == 0)
        helper->activation = wl_registry_bind(registry, name, &xdg_activation_v1_interface, 1);
}

static void global_remove(void *data, struct wl_registry *registry, uint32_t name)
{
    (void)data;
    (void)registry;
    (void)name;
}

static const struct wl_registry_listener registry_listener = {.global = global,
                                                              .global_remove = global_remove};

static void token_done(void *data, struct xdg_activation_token_v1 *token, const char *text)
{
    (void)token;
    struct helper *helper = data;
    helper->token = strdup(text);
}

static const struct xdg_activation_token_v1_listener token_listener = {.done = token_done};

static void shell_ping(void *data, struct xdg_wm_base *shell, uint32_t serial)
{
    (void)data;
    xdg_wm_base_pong(shell, serial);
}

static const struct xdg_wm_base_listener shell_listener = {.ping = shell_ping};

static void surface_configure(void *data, struct xdg_surface *surface, uint32_t serial)
{
    struct helper *helper = data;
    xdg_surface_ack_configure(surface, serial);
    helper->configured = 1;
}

static const struct xdg_surface_listener surface_listener = {.configure = surface_configure};

static void toplevel_configure(void *data, struct xdg_toplevel *toplevel, int32_t width,
                               int32_t height, struct wl_array *states)
{
    (void)data;
    (void)toplevel;
    (void)width;
    (void)height;
    (void)states;
}

static void toplevel_close(void *data, struct xdg_toplevel *toplevel)
{
    (void)data;
    (void)toplevel;
}

// Version 1 of the shell: the later events are never sent.
static const struct xdg_toplevel_listener toplevel_listener = {.configure = toplevel_configure,
                                                               .close = toplevel_close};

static int print_token(struct wl_display *display, struct helper *helper)
{
    if (!helper->activation) {
        fprintf(stderr, "the compositor offers no xdg_activation_v1\n");
        return 1;
    }
    struct xdg_activation_token_v1 *token =
        xdg_activation_v1_get_activation_token(helper->activation);
    xdg_activation_token_v1_add_listener(token, &token_listener, helper);
    xdg_activation_token_v1_commit(token);
    while (!helper->token && wl_display_dispatch(display) != -1) {
    }
    if (!helper->token)
        return 1;
    printf("%s\n", helper->token);
    fflush(stdout);
    xdg_activation_token_v1_destroy(token);
    wl_display_roundtrip(display);
    return 0;
}

static int show_window(struct wl_display *display, struct helper *helper, const char *title)
{
    if (!helper->compositor || !helper->shm || !helper->shell) {
        fprintf(stderr, "the compositor lacks wl_compositor, wl_shm or xdg_wm_base\n");
        return 1;
    }
    const int width = 400;
    const int height = 300;
    const int stride = width * 4;
    const int size = stride * height;
    const int fd = memfd_create("zqb-e2e-window", MFD_CLOEXEC);
    if (fd < 0 || ftruncate(fd, size) != 0)
        return 1;
    uint32_t *pixels = mmap(NULL, (size_t)size, PROT_READ | PROT_WRITE, MAP_SHARED, fd, 0);
    if (pixels == MAP_FAILED)
        return 1;
    for (int i = 0; i < width * height; ++i)
        pixels[i] = 0xff3050a0u;
    struct wl_shm_pool *pool = wl_shm_create_pool(helper->shm, fd, size);
    struct wl_buffer *buffer =
        wl_shm_pool_create_buffer(pool, 0, width, height, stride, WL_SHM_FORMAT_XRGB8888);

    xdg_wm_base_add_listener(helper->shell, &shell_listener, helper);
    struct wl_surface *surface = wl_compositor_create_surface(helper->compositor);
    struct xdg_surface *xdg = xdg_wm_base_get_xdg_surface(helper->shell, surface);
    xdg_surface_add_listener(xdg, &surface_listener, helper);
    struct xdg_toplevel *toplevel = xdg_surface_get_toplevel(xdg);
    xdg_toplevel_add_listener(toplevel, &toplevel_listener, helper);
    xdg_toplevel_set_title(toplevel, title);
    xdg_toplevel_set_app_id(toplevel, "zqb-e2e-other");
    wl_surface_commit(surface);
    while (!helper->configured && wl_display_dispatch(display) != -1) {
    }
    wl_surface_attach(surface, buffer, 0, 0);
    wl_surface_commit(surface);
    printf("mapped\n");
    fflush(stdout);
    while (wl_display_dispatch(display) != -1) {
    }
    return 0;
}

int main(int argc, char **argv)
{
    if (argc < 2 ||
        (strcmp(argv[1], "token") != 0 && (strcmp(argv[1], "window") != 0 || argc < 3))) {
        fprintf(stderr, "usage: %s token | window TITLE\n", argv[0]);
        return 2;
    }
    struct wl_display *display = wl_display_connect(NULL);
    if (!display) {
        fprintf(stderr, "cannot connect to the Wayland display\n");
        return 1;
    }
    struct helper helper = {0};
    struct wl_registry *registry = wl_display_get_registry(display);
    wl_registry_add_listener(registry, &registry_listener, &helper);
    wl_display_roundtrip(display);

    const int status = strcmp(argv[1], "token") == 0 ? print_token(display, &helper)
                                                     : show_window(display, &helper, argv[2]);
    free(helper.token);
    wl_display_disconnect(display);
    return status;
}
