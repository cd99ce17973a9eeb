// A page of widgets: it turns window pixels into units, keeps the focus, passes
// events to the focused widget, and runs callbacks that wait for their time.
// The queues advance with the frames the screen draws, never with messages.
#include <GL/gl.h>

#include <algorithm>

#include "menus/menus.h"

namespace {
DelayedEvent keyEvent(GuiWidget* widget, GuiKeyCallback callback, int key) {
    DelayedEvent event;
    event.keyCallback = callback;
    event.widget = widget;
    event.key = key;
    return event;
}
}  // namespace

bool DelayedEvent::fire() const {
    TRACE_LOCATION("DelayedEvent::fire");
    if (mouseCallback) return mouseCallback(widget, x, y, button);
    if (moveCallback) return moveCallback(widget, x, y);
    if (keyCallback) return keyCallback(widget, key);
    return false;
}

GuiScreen::GuiScreen() {
    TRACE_LOCATION("GuiScreen::GuiScreen");
    GLWindow::unRestrictMouse();
    clock.reset();
}

GuiScreen::~GuiScreen() {
    deleteWidgets();
}

bool GuiScreen::owns(const GuiWidget* widget) const {
    TRACE_LOCATION("GuiScreen::owns");
    return widget && widget->screen == this;
}

void GuiScreen::addWidget(GuiWidget* widget) {
    TRACE_LOCATION("GuiScreen::addWidget");
    if (!widget || widget->screen) return;
    if (std::find(widgets.begin(), widgets.end(), widget) != widgets.end()) return;
    widgets.push_back(widget);
    widget->screen = this;
}

void GuiScreen::focus(GuiWidget* widget) {
    TRACE_LOCATION("GuiScreen::focus");
    if (widget->focused) return;
    widget->focused = true;
    widget->gainedFocus();
}

void GuiScreen::unfocus(GuiWidget* widget) {
    TRACE_LOCATION("GuiScreen::unfocus");
    if (!widget->focused) return;
    widget->focused = false;
    widget->lostFocus();
}

void GuiScreen::setFocusedWidget(GuiWidget* widget) {
    TRACE_LOCATION("GuiScreen::setFocusedWidget");
    if (!owns(widget) || widget == focusedWidget) return;
    if (focusedWidget) {
        focusedWidget->focused = false;
        focusedWidget->lostFocus();
    }
    widget->focused = true;
    widget->gainedFocus();
    focusedWidget = widget;
}

void GuiScreen::setDefaultFocusWidget(GuiWidget* widget) {
    TRACE_LOCATION("GuiScreen::setDefaultFocusWidget");
    if (owns(widget)) defaultFocusWidget = widget;
}

void GuiScreen::run() {
    TRACE_LOCATION("GuiScreen::run");
    GLWindowEventListener* const savedListener = GLWindow::getEventListener();
    GLWindow::setEventListener(this);
    running = true;
    while (running && GLWindow::exists()) {
        GLWindow::requestRepaint();
        GLWindow::run();
    }
    GLWindow::setEventListener(savedListener);
}

void GuiScreen::exit() {
    TRACE_LOCATION("GuiScreen::exit");
    running = false;
}

void GuiScreen::reset() {
    TRACE_LOCATION("GuiScreen::reset");
    for (GuiWidget* widget : widgets) widget->reset();
    clearDelayedEvents();
    focusedWidget = nullptr;
    clock.reset();
}

void GuiScreen::clearDelayedEvents() {
    TRACE_LOCATION("GuiScreen::clearDelayedEvents");
    for (std::list<DelayedEvent>& queue : queues) queue.clear();
}

template <typename Callback>
bool GuiScreen::pending(Callback DelayedEvent::*field, Callback callback) const {
    TRACE_LOCATION("GuiScreen::pending");
    for (const std::list<DelayedEvent>& queue : queues)
        for (const DelayedEvent& event : queue)
            if (event.*field == callback) return true;
    return false;
}

bool GuiScreen::delayedEventPending(GuiMouseCallback callback) const {
    TRACE_LOCATION("GuiScreen::delayedEventPending");
    return pending(&DelayedEvent::mouseCallback, callback);
}

bool GuiScreen::delayedEventPending(GuiMoveCallback callback) const {
    TRACE_LOCATION("GuiScreen::delayedEventPending");
    return pending(&DelayedEvent::moveCallback, callback);
}

bool GuiScreen::delayedEventPending(GuiKeyCallback callback) const {
    TRACE_LOCATION("GuiScreen::delayedEventPending");
    return pending(&DelayedEvent::keyCallback, callback);
}

// A callback whose delay is above 0 waits at the end of its queue; otherwise it
// runs at once and what it gives is not looked at.
void GuiScreen::runCallback(DelayedEvent event, float delay, Queue queue) {
    TRACE_LOCATION("GuiScreen::runCallback");
    if (delay > 0.0f) {
        event.remaining = delay;
        queues[queue].push_back(event);
    } else {
        event.fire();
    }
}

void GuiScreen::runDelayedEvents(float seconds) {
    TRACE_LOCATION("GuiScreen::runDelayedEvents");
    for (std::list<DelayedEvent>& queue : queues) {
        for (auto event = queue.begin(); event != queue.end();) {
            event->remaining -= seconds;
            if (event->remaining > 0.0f) {
                ++event;
                continue;
            }
            const DelayedEvent due = *event;
            event = queue.erase(event);
            // A callback that moved on cancels everything queued for the old state.
            if (due.fire()) {
                clearDelayedEvents();
                return;
            }
        }
    }
}

void GuiScreen::mouseMoved(int windowX, int windowY) {
    TRACE_LOCATION("GuiScreen::mouseMoved");
    const int px = Gui::toVirtualX(windowX);
    const int py = Gui::toVirtualY(windowY);
    GuiWidget* hit = nullptr;
    for (GuiWidget* widget : widgets) {
        if (!hit && widget->enabled && widget->contains(px, py)) {
            hit = widget;
            focus(widget);
            widget->mouseMoved(px, py);
        } else {
            unfocus(widget);
        }
    }
    focusedWidget = hit;
    if (hit && hit->onMouseMoved) {
        DelayedEvent event;
        event.moveCallback = hit->onMouseMoved;
        event.widget = hit;
        event.x = px;
        event.y = py;
        runCallback(event, hit->onMouseMovedDelay, mouseMovedQueue);
    }
}

// The press or release goes to the focused widget, not to the one under the
// mouse: hovering has already made them the same.
void GuiScreen::mouseButton(int windowX, int windowY, int button, bool pressed) {
    TRACE_LOCATION("GuiScreen::mouseButton");
    if (!focusedWidget) return;
    GuiWidget* const widget = focusedWidget;
    DelayedEvent event;
    event.widget = widget;
    event.x = Gui::toVirtualX(windowX);
    event.y = Gui::toVirtualY(windowY);
    event.button = button;
    if (pressed) {
        widget->mousePressed(event.x, event.y, button);
        event.mouseCallback = widget->onMousePressed;
        if (event.mouseCallback) runCallback(event, widget->onMousePressedDelay, mousePressedQueue);
    } else {
        widget->mouseReleased(event.x, event.y, button);
        event.mouseCallback = widget->onMouseReleased;
        if (event.mouseCallback) runCallback(event, widget->onMouseReleasedDelay, mouseReleasedQueue);
    }
}

void GuiScreen::mousePressed(int windowX, int windowY, int button) {
    TRACE_LOCATION("GuiScreen::mousePressed");
    mouseButton(windowX, windowY, button, true);
}

void GuiScreen::mouseReleased(int windowX, int windowY, int button) {
    TRACE_LOCATION("GuiScreen::mouseReleased");
    mouseButton(windowX, windowY, button, false);
}

void GuiScreen::keyboardPressed(int key) {
    TRACE_LOCATION("GuiScreen::keyboardPressed");
    // The first key only wakes the focus.
    if (!focusedWidget) {
        if (owns(defaultFocusWidget)) {
            focus(defaultFocusWidget);
            focusedWidget = defaultFocusWidget;
        }
        return;
    }
    GuiWidget* const widget = focusedWidget;
    widget->keyboardPressed(key);
    if (widget->onKeyboardPressed)
        runCallback(keyEvent(widget, widget->onKeyboardPressed, key), widget->onKeyboardPressedDelay,
                    keyPressedQueue);
    if (focusedWidget) focusedWidget->doFocusTraversal(key);
}

void GuiScreen::keyboardReleased(int key) {
    TRACE_LOCATION("GuiScreen::keyboardReleased");
    if (!focusedWidget) return;
    GuiWidget* const widget = focusedWidget;
    widget->keyboardReleased(key);
    if (widget->onKeyboardReleased)
        runCallback(keyEvent(widget, widget->onKeyboardReleased, key), widget->onKeyboardReleasedDelay,
                    keyReleasedQueue);
}

void GuiScreen::windowClosing() {
    TRACE_LOCATION("GuiScreen::windowClosing");
    GLWindow::close();
}

void GuiScreen::windowClosed() {
    TRACE_LOCATION("GuiScreen::windowClosed");
    deleteWidgets();
}

void GuiScreen::deleteWidgets() {
    TRACE_LOCATION("GuiScreen::deleteWidgets");
    for (GuiWidget* widget : widgets) delete widget;
    widgets.clear();
    focusedWidget = nullptr;
    defaultFocusWidget = nullptr;
    clearDelayedEvents();
}

// Widgets draw in units, stretched over the window; without a window they
// still run their clocks, so that counters and delayed events go on.
void GuiScreen::windowRedrawing() {
    TRACE_LOCATION("GuiScreen::windowRedrawing");
    const bool drawing = GLWindow::contextAvailable();
    if (drawing) {
        if (clearBackground) {
            glClearColor(clearR, clearG, clearB, 1.0f);
            glClear(GL_COLOR_BUFFER_BIT);
        }
        glPushAttrib(GL_ENABLE_BIT);
        glDisable(GL_LIGHTING);
        glDisable(GL_BLEND);
        glDisable(GL_CULL_FACE);
        glDisable(GL_TEXTURE_2D);
        glDisable(GL_DEPTH_TEST);
        glShadeModel(GL_SMOOTH);
        GLWindow::glBeginDraw2d();
        Gui::scaleToWindow();
    }
    for (GuiWidget* widget : widgets)
        if (widget->visible) widget->windowRedrawing();
    if (drawing) {
        if (swapBuffers) GLWindow::swapBuffers();
        glPopAttrib();
    }
    clock.update();
    runDelayedEvents(clock.deltaSeconds);
}
