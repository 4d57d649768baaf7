// SPDX-License-Identifier: MIT
//
// A user who never tires: random commands by real input on a viewer under the window manager, and
// what the program holds meanwhile, in its own memory and in the server.
#pragma once

#include "tests/program/ViewerRun.h"

#include <map>
#include <random>
#include <string>

class Soak
{
public:
    enum Action {
        Load,        // opens the Load dialog and picks the log or one that is not there, or cancels
        ReportType,  // opens the Reports dialog and picks a type
        Sort,        // opens the Sort dialog and enters keys or cancels
        Browse,      // opens or closes the source
        Resize,      //
        Help,        // opens a topic of the Help menu; closes the window now and then
        ContextHelp, // by the tool and a click on the report, or by the help key
        Select,      // clicks rows, double clicks, the wheel
        NActions
    };

    // What the program holds.
    struct Holding
    {
        long memory = 0;                       // KiB that are its own and written to
        unsigned long pixmapBytes = 0;         // in the server
        std::map<std::string, long> resources; // in the server: type > number
    };

    // Borrows both. `run` shows the log "p.log" of its working directory in its main window.
    Soak(ViewerRun& run, unsigned seed);

    // Does one action and waits until the program has done its part. Returns false when it does not
    // come to that, with problem() set.
    bool act(Action action);
    // One at random.
    bool act() { return act(static_cast<Action>(pick(NActions))); }

    // How often an action of this kind was done.
    long done(Action action) const { return _done[action]; }
    const std::string& problem() const { return _problem; }

    Holding holding();

private:
    bool perform(Action action);
    bool focusMain();
    // Opens a menu of the menu bar and takes an entry, both by their mnemonics.
    bool choose(KeySym menu, KeySym entry);
    // The same for an entry that opens the dialog `title`, which gets the keyboard; 0 without it.
    Window openDialog(KeySym entry, const char* title);
    // Waits until the dialog is gone.
    bool isGone(const char* title);
    bool hasKeyboard(Window window);
    bool settle();

    bool load();
    bool reportType();
    bool sort();
    bool resize();
    bool help();
    bool contextHelp();
    bool select();

    bool fail(const std::string& problem);
    int pick(int n) { return static_cast<int>(_random() % static_cast<unsigned>(n)); }

    ViewerRun& _run;
    Display* _display;
    Window _main;
    std::mt19937 _random;
    long _done[NActions];
    std::string _problem;
};
