"""A virtual screen split into monitors, with or without a window manager; its events, keys and pointer."""

import contextlib
import os
import pathlib
import random
import subprocess

import Xlib.display
import Xlib.error
from Xlib import X, XK, Xatom, Xutil
from Xlib.ext import damage, randr, xtest
from Xlib.protocol import rq

from .framebuffer import FrameBuffer
from .processes import end, running

MILLIMETRES_PER_INCH = 25.4
DOTS_PER_INCH = 96
MAIN, SECOND = CONNECTORS = "M0", "M1"
GROUND = 0x39424E  # what paint_ground takes for pictures that people look at
NO_KEYS = pathlib.Path(__file__).with_name("openbox.xml")


class SetMonitor(rq.Request):
    """As RandR has it; the library's own cannot be sent."""
    _request = rq.Struct(
        rq.Card8("opcode"), rq.Opcode(43), rq.RequestLength(), rq.Window("window"), rq.Card32("name"),
        rq.Bool("primary"), rq.Bool("automatic"), rq.LengthOf("outputs", 2), rq.Int16("x"), rq.Int16("y"),
        rq.Card16("width"), rq.Card16("height"), rq.Card32("wide"), rq.Card32("high"),
        rq.List("outputs", rq.Card32Obj))


class Screen:
    """What a person in front of the monitors can see and press."""

    def __init__(self, name, folder, waiter):
        self.name = name
        self.waiter = waiter
        self.picture = FrameBuffer(folder / "Xvfb_screen0")
        self._x = Xlib.display.Display(name)
        self._root = self._x.screen().root
        self._root.change_attributes(event_mask=X.SubstructureNotifyMask | X.PropertyChangeMask)
        self._x.damage_query_version()
        self._x.xfixes_query_version()
        self._damage = self._root.damage_create(damage.DamageReportNonEmpty)
        self._x.flush()
        waiter.watch(self._x.fileno(), self._take_events, queued=True)

    def _take_events(self):
        any_event = changed = False
        while self._x.pending_events():
            any_event = True
            changed |= self._x.next_event().type == self._x.extension_event.DamageNotify
        if changed:
            self._x.damage_subtract(self._damage)
            self._x.sync()  # who looks before that is done misses what is drawn in between, and is not told of it
        return any_event

    def paint_ground(self, color):
        """Gives what no window covers that colour, 0xrrggbb."""
        self._root.change_attributes(background_pixel=color)
        self._root.clear_area()
        self._x.flush()

    def close(self):
        self.waiter.forget(self._x.fileno())
        self._x.close()

    def unplug(self, connector):
        self._root.xrandr_delete_monitor(self._x.get_atom(connector))
        self._x.sync()

    def plug(self, connector, monitor, instead=None):
        """One whose name begins as MAIN is the main display. In another's stead it comes at one blow: nobody can look
        in between, when there is neither. The same connector will not do: the toolkit is not told of such a change."""
        x, y, width, height = monitor
        wide, high = (round(size * MILLIMETRES_PER_INCH / DOTS_PER_INCH) for size in (width, height))
        main = connector.startswith(MAIN)
        output = self._root.xrandr_get_screen_resources().outputs[:1] if main else []
        self._x.grab_server()
        if instead:
            self._root.xrandr_delete_monitor(self._x.get_atom(instead))
        SetMonitor(display=self._x.display, opcode=self._x.display.get_extension_major(randr.extname),
                   window=self._root, name=self._x.get_atom(connector), primary=main, automatic=False, x=x, y=y,
                   width=width, height=height, wide=wide, high=high, outputs=output)
        self._x.ungrab_server()
        self._x.sync()

    def turn_to_desktop(self, number):
        """One of the two virtual desktops, 0 or 1."""
        self._tell(self._root, "_NET_CURRENT_DESKTOP", number,
                   event_mask=X.SubstructureRedirectMask | X.SubstructureNotifyMask)

    # Windows

    def windows(self):
        """Title to (x, y, width, height) of the content of all windows that can be seen."""
        return {title: area for title, area, _ in self._seen(self._root)}

    def _seen(self, window):
        for child in window.query_tree().children:
            try:
                title = self._text(child)
                if title and child.get_attributes().map_state == X.IsViewable:
                    size = child.get_geometry()
                    place = self._root.translate_coords(child, 0, 0)
                    yield title, (place.x, place.y, size.width, size.height), child
                elif not title:
                    yield from self._seen(child)
            except (Xlib.error.BadWindow, Xlib.error.BadDrawable):
                pass  # it went away meanwhile

    def _find(self, title):
        return next(window for name, _, window in self._seen(self._root) if name == title)

    def _text(self, window):
        value = window.get_full_property(self._x.get_atom("_NET_WM_NAME"), X.AnyPropertyType)
        return value.value.decode("utf-8", "replace") if value is not None and value.format == 8 else ""

    def active_title(self):
        try:
            return "".join(self._titles("_NET_ACTIVE_WINDOW"))
        except Xlib.error.BadWindow:
            return ""

    def stacking(self):
        """The titles of the window manager's windows, from bottom to top."""
        return self._titles("_NET_CLIENT_LIST_STACKING")

    def _titles(self, name):
        value = self._root.get_full_property(self._x.get_atom(name), Xatom.WINDOW)
        return [self._text(self._x.create_resource_object("window", number))
                for number in (value.value if value is not None else []) if number != X.NONE]

    def icon(self, title):
        """Words of the window's picture for the desktop: width, height, then 0xaarrggbb a pixel."""
        value = self._find(title).get_full_property(self._x.get_atom("_NET_WM_ICON"), Xatom.CARDINAL)
        return list(value.value) if value is not None else []

    def ask_to_close(self, title):
        """What the close box of a window does, told to the program directly."""
        self._tell(self._find(title), "WM_PROTOCOLS", self._x.get_atom("WM_DELETE_WINDOW"))

    def _tell(self, window, what, value, **options):
        event = Xlib.protocol.event.ClientMessage(
            window=window, client_type=self._x.get_atom(what), data=(32, [value, X.CurrentTime, 0, 0, 0]))
        window.send_event(event, **options)
        self._x.flush()

    def put_panel(self, x, y, width, height, color):
        """A desktop's panel at the lower edge of the screen, which keeps that edge to itself."""
        panel = self._root.create_window(x, y, width, height, 0, X.CopyFromParent, background_pixel=color)
        atom = self._x.get_atom
        panel.change_property(atom("_NET_WM_NAME"), atom("UTF8_STRING"), 8, b"panel")
        panel.change_property(atom("_NET_WM_WINDOW_TYPE"), Xatom.ATOM, 32, [atom("_NET_WM_WINDOW_TYPE_DOCK")])
        panel.change_property(atom("_NET_WM_STRUT_PARTIAL"), Xatom.CARDINAL, 32,
                              [0, 0, 0, height, 0, 0, 0, 0, 0, 0, x, x + width - 1])
        panel.set_wm_normal_hints(flags=Xutil.USPosition | Xutil.USSize)
        panel.map()
        self._x.flush()

    def move(self, title, x, y):
        self._find(title).configure(x=x, y=y)
        self._x.flush()

    # Keys and pointer

    def press(self, *keys):
        """Presses a chord of key names, as in press("Shift_L", "b")."""
        with self.held(*keys):
            pass

    @contextlib.contextmanager
    def held(self, *keys):
        """Keys that stay down for the scope, and repeat as on any keyboard."""
        codes = [self._x.keysym_to_keycode(XK.string_to_keysym(key)) for key in keys]
        for code in codes:
            xtest.fake_input(self._x, X.KeyPress, code)
        self._x.flush()
        yield
        for code in reversed(codes):
            xtest.fake_input(self._x, X.KeyRelease, code)
        self._x.flush()

    def point(self, x, y):
        xtest.fake_input(self._x, X.MotionNotify, x=x, y=y)
        self._x.flush()

    @contextlib.contextmanager
    def dragging(self, x, y):
        """The main button stays down for the scope. A window manager needs a few moves of the pointer."""
        self.point(x, y)
        xtest.fake_input(self._x, X.ButtonPress, 1)
        self._x.flush()
        yield
        xtest.fake_input(self._x, X.ButtonRelease, 1)
        self._x.flush()

    def pointer_is_seen(self):
        image = self._x.xfixes_get_cursor_image(self._root).cursor_image
        return any(pixel >> 24 for pixel in image)

    def click(self, x, y, times=1):
        for _ in range(times):
            with self.dragging(x, y):
                pass


def _start_server(stack, folder, width, height):
    """A server under a random free number, which its lock file keeps for it; told ready by the server itself."""
    for _ in range(20):
        number = random.randrange(100, 30000)
        read_end, write_end = os.pipe()
        process = subprocess.Popen(
            ["Xvfb", f":{number}", "-displayfd", str(write_end), "-screen", "0", f"{width}x{height}x24", "-noreset",
             "-nolisten", "tcp", "-dpi", str(DOTS_PER_INCH), "-fbdir", str(folder)],
            stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, pass_fds=[write_end])
        os.close(write_end)
        with open(read_end) as ready:
            if ready.readline().strip() == str(number):
                stack.callback(end, process)
                return f":{number}"
        end(process)
    raise RuntimeError("no X server could be started")


@contextlib.contextmanager
def screen(folder, waiter, monitors, window_manager=True):
    """A desktop of these monitors, each (x, y, width, height), the main one first, until the end of the scope."""
    with contextlib.ExitStack() as stack:
        folder.mkdir(parents=True, exist_ok=True)
        name = _start_server(stack, folder, max(x + w for x, _, w, _ in monitors),
                             max(y + h for _, y, _, h in monitors))
        desktop = Screen(name, folder, waiter)
        stack.callback(desktop.close)
        for connector, monitor in zip(CONNECTORS, monitors):
            desktop.plug(connector, monitor)
        if window_manager:
            environment = {**os.environ, "DISPLAY": name}
            stack.enter_context(running(["openbox", "--sm-disable", "--config-file", str(NO_KEYS)], env=environment,
                                        stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL))
            # The first list of windows: what is mapped before it is lost in the window manager's own start.
            first = desktop._x.get_atom("_NET_CLIENT_LIST")
            waiter.until(lambda: desktop._root.get_full_property(first, X.AnyPropertyType), "a window manager")
        yield desktop
