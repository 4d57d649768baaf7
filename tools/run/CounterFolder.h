// SPDX-License-Identifier: MIT
//
// The private folder that the processes of a command leave their counters in: below the folder for
// temporary files (TMPDIR, else /tmp), readable by its user alone.
//
//   zem-run-counters.XXXXXX/all          of the command, but for the tests of its own
//   zem-run-counters.XXXXXX/each/NAME    of one test, with --each
//   zem-run-counters.XXXXXX/driver       what the driver of the tests and zem-run tell each other
//
// It goes with the object. What a killed zem-run left is known by a lock that nobody holds any more
// and goes with the next run.
#pragma once

#include <string>

class CounterFolder
{
public:
    CounterFolder() = default;
    // Removes the folder with all that is in it.
    ~CounterFolder();
    CounterFolder(const CounterFolder&) = delete;
    CounterFolder& operator=(const CounterFolder&) = delete;

    // Makes the folder and those in it. To be called once. Returns false with problem() set.
    bool create();

    // Removes the folder now. False, with problem() set, when something of it is left.
    bool remove();

    // Paths, absolute.
    const std::string& path() const { return _path; }
    std::string all() const { return _path + "/all"; }
    std::string each() const { return _path + "/each"; }
    std::string driver() const { return _path + "/driver"; }

    const std::string& problem() const { return _problem; }

    // Removes the folders of this user's zem-runs that were killed. What cannot be removed stays.
    static void removeDead();

private:
    bool makeOne();
    bool fail(const std::string& what, int reason);

    std::string _path;
    std::string _problem;
    int _fd = -1; // of the folder; holds the lock
};
