// SPDX-License-Identifier: MIT
//
// The program-wide objects, made before main() and in this order. They are never deleted: exit()
// runs destructors while the display may be gone already, and widgets and drawing contexts must not
// be given back to it then.
#include "zem/App/ZEMApp.h"

#include "qip/Components/qipQuitCommand.h"
#include "zem/Reports/RptArea.h"
#include "zem/Status/ZEMStsBar.h"
#include "zem/Window/ExitBtn.h"

#include <cstdio>
#include <cstdlib>
#include <new>

namespace {

[[maybe_unused]] const bool made = [] {
    zemApp = new (std::nothrow) ZEMApp("zem");
    theReportContainer = new (std::nothrow) RptArea("rptArea");
    theStatusBar = new (std::nothrow) ZEMStsBar("statusBar");
    theQuitCommand = new (std::nothrow) qipQuitCommand("anotherQuitCommand", 0);
    if (zemApp == nullptr || theReportContainer == nullptr || theStatusBar == nullptr ||
        theQuitCommand == nullptr) {
        std::fputs(" *** zem: out of memory\n", stderr);
        std::_Exit(1); // nothing is there yet that could be taken down
    }
    return true;
}();

} // namespace
