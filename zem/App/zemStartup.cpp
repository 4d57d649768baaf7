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

namespace {

ZEMApp* const zemApp = new ZEMApp("zem");

[[maybe_unused]] const bool made = [] {
    theReportContainer = new RptArea("rptArea");
    theStatusBar = new ZEMStsBar("statusBar");
    theQuitCommand = new qipQuitCommand("anotherQuitCommand", 0);
    return zemApp != nullptr;
}();

} // namespace
