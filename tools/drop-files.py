"""Drops files onto a window as a file manager does (XDND): WINDOW is its title, each PATH one of Wine's."""
import ctypes as c
import os
import subprocess
import sys
import urllib.parse

title, *paths = sys.argv[1:]
drives = os.environ["WINEPREFIX"] + "/dosdevices/"
uris = "".join("file://" + urllib.parse.quote(os.path.realpath(drives + path[:2].lower()) + path[2:].replace("\\", "/"))
               + "\r\n" for path in paths).encode()

x = c.CDLL("libX11.so.6")
Long = c.c_ulong
for name, result, *arguments in (
        ("XOpenDisplay", c.c_void_p, c.c_char_p), ("XInternAtom", Long, c.c_void_p, c.c_char_p, c.c_int),
        ("XDefaultRootWindow", Long, c.c_void_p),
        ("XCreateSimpleWindow", Long, c.c_void_p, Long, *[c.c_int] * 5, Long, Long),
        ("XSetSelectionOwner", c.c_int, c.c_void_p, Long, Long, Long),
        ("XSendEvent", c.c_int, c.c_void_p, Long, c.c_int, c.c_long, c.c_void_p),
        ("XChangeProperty", c.c_int, c.c_void_p, Long, Long, Long, c.c_int, c.c_int, c.c_char_p, c.c_int),
        ("XTranslateCoordinates", c.c_int, c.c_void_p, Long, Long, c.c_int, c.c_int, *[c.c_void_p] * 3),
        ("XNextEvent", c.c_int, c.c_void_p, c.c_void_p), ("XFlush", c.c_int, c.c_void_p)):
    getattr(x, name).restype, getattr(x, name).argtypes = result, arguments

CLIENT_MESSAGE, SELECTION_REQUEST, SELECTION_NOTIFY = 33, 30, 31
display = x.XOpenDisplay(None)
root = x.XDefaultRootWindow(display)
source = x.XCreateSimpleWindow(display, root, 0, 0, 1, 1, 0, 0, 0)
target = int(subprocess.check_output(["xdotool", "search", "--onlyvisible", "--name", f"^{title}$"]).split()[-1])


def atom(name):
    return x.XInternAtom(display, name.encode(), 0)


def event(*words):
    """The 24 words of an event; what is None the server fills in."""
    return (Long * 24)(*[word or 0 for word in words])


def tell(message, *data):
    x.XSendEvent(display, target, 0, 0, event(CLIENT_MESSAGE, 0, 0, display, target, atom(message), 32, source, *data))
    x.XFlush(display)


left, top, child = c.c_int(), c.c_int(), Long()
x.XTranslateCoordinates(display, target, root, 40, 40, c.byref(left), c.byref(top), c.byref(child))
x.XSetSelectionOwner(display, atom("XdndSelection"), source, 0)
tell("XdndEnter", 5 << 24, atom("text/uri-list"))
tell("XdndPosition", 0, left.value << 16 | top.value, 0, atom("XdndActionCopy"))
while True:
    came = event()
    x.XNextEvent(display, came)
    if came[0] & 0xFF == SELECTION_REQUEST:
        _, _, _, _, _, requestor, selection, kind, place, time = came[:10]
        x.XChangeProperty(display, requestor, place, kind, 8, 0, uris, len(uris))
        x.XSendEvent(display, requestor, 0, 0, event(SELECTION_NOTIFY, 0, 0, display, requestor, selection, kind, place, time))
        x.XFlush(display)
    elif came[0] & 0xFF == CLIENT_MESSAGE and came[5] == atom("XdndStatus"):
        if not came[8] & 1:
            sys.exit("The window takes nothing.")
        tell("XdndDrop", 0, 0)
    elif came[0] & 0xFF == CLIENT_MESSAGE and came[5] == atom("XdndFinished"):
        break
