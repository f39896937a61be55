#include "Tests/Apps/Player/Window/DesktopWindow.h"

#include <X11/Xlib.h>
#include <X11/Xutil.h>

#include <utility>

using platform::ImagePtr;

struct DesktopWindow::Handles {
    Handles(Display* opened) : display(opened) {}
    ~Handles() { XCloseDisplay(display); }
    Handles(const Handles&) = delete;
    Handles& operator=(const Handles&) = delete;

    Display* display;
    Window window = 0;
};

namespace {

/// A window may go between two requests; the answer is then empty, which is enough.
int ignoreError(Display* /*display*/, XErrorEvent* /*event*/) {
    return 0;
}

std::string titleOf(Display* display, Window window) {
    char* name = nullptr;
    if (XFetchName(display, window, &name) == 0)
        return {};
    std::string title = name;
    XFree(name);
    return title;
}

Window childTitled(Display* display, const std::string& title) {
    Window root = 0;
    Window parent = 0;
    Window* children = nullptr;
    unsigned count = 0;
    if (XQueryTree(display, DefaultRootWindow(display), &root, &parent, &children, &count) == 0)
        return 0;
    Window found = 0;
    for (unsigned i = 0; i < count && found == 0; ++i) {
        if (titleOf(display, children[i]) == title)
            found = children[i];
    }
    XFree(children);
    return found;
}

ImagePtr pictureOf(XImage& image) {
    platform::PixelStorage pixels(image.width, image.height);
    for (int y = 0; y < image.height; ++y) {
        std::uint8_t* out = pixels.row(y);
        for (int x = 0; x < image.width; ++x, out += 4) {
            const unsigned long pixel = XGetPixel(&image, x, y);
            out[0] = static_cast<std::uint8_t>(pixel >> 16U);
            out[1] = static_cast<std::uint8_t>(pixel >> 8U);
            out[2] = static_cast<std::uint8_t>(pixel);
            out[3] = 255;
        }
    }
    return std::make_shared<platform::Image>(std::move(pixels));
}

} // namespace

std::unique_ptr<DesktopWindow> DesktopWindow::find(const std::string& display,
                                                   const std::string& title) {
    XSetErrorHandler(ignoreError);
    Display* const opened = XOpenDisplay(display.c_str());
    if (!opened)
        return nullptr;
    auto handles = std::make_unique<Handles>(opened);
    handles->window = childTitled(opened, title);
    if (handles->window == 0)
        return nullptr;
    return std::unique_ptr<DesktopWindow>(new DesktopWindow(std::move(handles)));
}

DesktopWindow::DesktopWindow(std::unique_ptr<Handles> handles) : handles_(std::move(handles)) {}

DesktopWindow::~DesktopWindow() = default;

ImagePtr DesktopWindow::picture() const {
    XWindowAttributes attributes{};
    if (XGetWindowAttributes(handles_->display, handles_->window, &attributes) == 0 ||
        attributes.map_state != IsViewable)
        return nullptr;
    XImage* const image = XGetImage(handles_->display, handles_->window, 0, 0,
                                    static_cast<unsigned>(attributes.width),
                                    static_cast<unsigned>(attributes.height), AllPlanes, ZPixmap);
    if (!image)
        return nullptr;
    const ImagePtr picture = pictureOf(*image);
    XDestroyImage(image);
    return picture;
}

void DesktopWindow::resize(platform::SizePx size) const {
    XMoveResizeWindow(handles_->display, handles_->window, 0, 0, static_cast<unsigned>(size.width),
                      static_cast<unsigned>(size.height));
    XFlush(handles_->display);
}

void DesktopWindow::drag(platform::Point from, platform::Point to) const {
    const auto send = [this](int type, long mask, unsigned state, platform::Point place) {
        XEvent event{};
        event.xbutton.type = type;
        event.xbutton.display = handles_->display;
        event.xbutton.window = handles_->window;
        event.xbutton.root = DefaultRootWindow(handles_->display);
        event.xbutton.x = event.xbutton.x_root = static_cast<int>(place.x);
        event.xbutton.y = event.xbutton.y_root = static_cast<int>(place.y);
        event.xbutton.state = state;
        event.xbutton.same_screen = True;
        if (type == MotionNotify)
            event.xmotion.is_hint = NotifyNormal;
        else
            event.xbutton.button = Button1;
        XSendEvent(handles_->display, handles_->window, False, mask, &event);
    };
    send(MotionNotify, PointerMotionMask, 0, from);
    send(ButtonPress, ButtonPressMask, 0, from);
    for (const double way : {0.5, 1.0}) {
        const platform::Point place{from.x + (to.x - from.x) * way, from.y + (to.y - from.y) * way};
        send(MotionNotify, PointerMotionMask, Button1Mask, place);
    }
    send(ButtonRelease, ButtonReleaseMask, Button1Mask, to);
    XFlush(handles_->display);
}

void DesktopWindow::close() const {
    XEvent event{};
    event.xclient.type = ClientMessage;
    event.xclient.window = handles_->window;
    event.xclient.message_type = XInternAtom(handles_->display, "WM_PROTOCOLS", False);
    event.xclient.format = 32;
    event.xclient.data.l[0] =
        static_cast<long>(XInternAtom(handles_->display, "WM_DELETE_WINDOW", False));
    XSendEvent(handles_->display, handles_->window, False, NoEventMask, &event);
    XFlush(handles_->display);
}
