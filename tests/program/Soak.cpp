// SPDX-License-Identifier: MIT
#include "tests/program/Soak.h"

#include "tests/support/XInput.h"

#include <X11/Xutil.h>
#include <X11/extensions/XRes.h>
#include <X11/keysym.h>

#include <algorithm>
#include <fstream>
#include <iterator>

namespace {

constexpr char LoadTitle[] = "Select ZEM log file";
constexpr char TypeTitle[] = "Select report type";
constexpr char SortTitle[] = "Select sort criteria";
constexpr char HelpTitle[] = "zem help";

// KiB that a process does not share and has written to.
long privateMemory(pid_t process)
{
    std::ifstream file("/proc/" + std::to_string(process) + "/smaps_rollup");
    for (std::string word; file >> word;) {
        if (word == "Private_Dirty:") {
            long size = 0;
            file >> size;
            return size;
        }
    }
    return 0;
}

} // namespace

Soak::Soak(ViewerRun& run, unsigned seed)
    : _run(run), _display(run.display()), _main(run.mainWindow()), _random(seed), _done{}
{}

bool Soak::fail(const std::string& problem)
{
    _problem = _problem.empty() ? problem : _problem;
    return false;
}

// The program and the window manager have nothing left to do.
bool Soak::settle()
{
    XSync(_display, False);
    _run.server().settleWindowManager();
    return _run.waitUntilIdle();
}

bool Soak::hasKeyboard(Window window)
{
    Window focus = 0;
    int revert = 0;
    XGetInputFocus(_display, &focus, &revert);
    return focus == window;
}

bool Soak::focusMain()
{
    XRaiseWindow(_display, _main);
    settle();
    XInput::click(_display, _main, _run.width(_main) - 40, _run.height(_main) - 15);
    return _run.waitFor([this] { return hasKeyboard(_main); }) || fail("no keyboard");
}

bool Soak::choose(KeySym menu, KeySym entry)
{
    if (!focusMain()) {
        return false;
    }
    const int nShown = _run.shownWindows();
    XInput::key(_display, menu, XK_Alt_L);
    if (!_run.waitFor([&] { return _run.shownWindows() > nShown; })) {
        return fail("no menu");
    }
    settle();
    XInput::key(_display, entry);
    return settle();
}

Window Soak::openDialog(KeySym entry, const char* title)
{
    Window dialog = 0;
    if (choose(XK_f, entry) && !_run.waitFor([&] {
            dialog = _run.titled(title);
            return dialog != 0 && hasKeyboard(dialog);
        })) {
        fail(std::string("no dialog: ") + title);
    }
    settle();
    return dialog;
}

bool Soak::isGone(const char* title)
{
    return _run.waitFor([&] { return _run.titled(title) == 0; }) ||
           fail(std::string("does not go: ") + title);
}

bool Soak::load()
{
    if (openDialog(XK_l, LoadTitle) == 0) {
        return false;
    }
    const int what = pick(4);
    if (what == 0) {
        XInput::key(_display, XK_Escape);
    } else {
        // The only log of the folder stands in the text field; "p.logx" there is not.
        XInput::key(_display, XK_End);
        XInput::type(_display, what == 1 ? "x" : "");
        XInput::key(_display, XK_Return);
    }
    return isGone(LoadTitle);
}

bool Soak::reportType()
{
    static const char* const types[] = {"Directory", "File", "Function", "Class"};
    if (openDialog(XK_r, TypeTitle) == 0) {
        return false;
    }
    XInput::type(_display, types[pick(4)]);
    XInput::key(_display, XK_Return);
    return isGone(TypeTitle);
}

bool Soak::sort()
{
    static const char* const keys[] = {"dFf", "b", "Ff", "n", "zz"};
    const Window dialog = openDialog(XK_s, SortTitle);
    if (dialog == 0) {
        return false;
    }
    if (pick(4) == 0) {
        XInput::closeWindow(_display, dialog);
    } else {
        XInput::type(_display, keys[pick(static_cast<int>(std::size(keys)))]);
        XInput::key(_display, XK_Return);
    }
    return isGone(SortTitle);
}

bool Soak::resize()
{
    _run.resize(_main, 600 + pick(600), 450 + pick(450));
    return true;
}

bool Soak::help()
{
    static const KeySym topics[] = {XK_o, XK_t, XK_r, XK_a};
    if (!choose(XK_h, topics[pick(4)])) {
        return false;
    }
    Window window = 0;
    if (!_run.waitFor([&] { return (window = _run.titled(HelpTitle)) != 0; })) {
        return fail("no help from the menu");
    }
    if (pick(2) == 0) {
        XInput::closeWindow(_display, window);
        return isGone(HelpTitle);
    }
    _run.resize(window, 300 + pick(600), 200 + pick(500));
    XInput::click(_display, window, 50, 80, 1, 4 + static_cast<unsigned>(pick(2)));
    return true;
}

bool Soak::contextHelp()
{
    if (!focusMain()) {
        return false;
    }
    const int x = _run.width(_main) / 2;
    if (pick(2) == 0) {
        XInput::moveTo(_display, _main, x, 150);
        XInput::key(_display, XK_F1);
    } else {
        XInput::click(_display, _main, _run.width(_main) - 85, 75); // the tool
        settle();
        XInput::click(_display, _main, x, 150);
    }
    return _run.waitFor([this] { return _run.titled(HelpTitle) != 0; }) ||
           fail("no help in context");
}

bool Soak::select()
{
    if (!focusMain()) {
        return false;
    }
    for (int i = 0; i < 4; ++i) {
        const int x = 40 + pick(_run.width(_main) - 120);
        const int y = 130 + pick(_run.height(_main) - 250);
        XInput::click(_display, _main, x, y, 1, 4 + static_cast<unsigned>(pick(2)));
        XInput::click(_display, _main, x, y, 1 + pick(2));
    }
    return true;
}

bool Soak::perform(Action action)
{
    switch (action) {
    case Load:
        return load();
    case ReportType:
        return reportType();
    case Sort:
        return sort();
    case Browse:
        return choose(XK_f, XK_b);
    case Resize:
        return resize();
    case Help:
        return help();
    case ContextHelp:
        return contextHelp();
    default:
        return select();
    }
}

bool Soak::act(Action action)
{
    ++_done[action];
    const bool isDone = perform(action) && settle();
    return (isDone && _run.running()) ||
           fail("action " + std::to_string(action) + (_run.running() ? "" : ": the program ended"));
}

Soak::Holding Soak::holding()
{
    Holding result;
    settle();
    result.memory = privateMemory(_run.process());
    int nTypes = 0;
    XResType* types = nullptr;
    if (XResQueryClientResources(_display, _main, &nTypes, &types) != 0) {
        for (int i = 0; i < nTypes; ++i) {
            char* name = XGetAtomName(_display, types[i].resource_type);
            result.resources[name == nullptr ? "" : name] = static_cast<long>(types[i].count);
            XFree(name);
        }
        XFree(types);
    }
    XResQueryClientPixmapBytes(_display, _main, &result.pixmapBytes);
    return result;
}
