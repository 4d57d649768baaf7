// SPDX-License-Identifier: MIT
//
// The program's entry. It stands in no library, and neither does the file that makes the
// application object: a linker drops what nothing refers to.
#include "qip/Base/qipApplication.h"
#include "qip/Support/cmdln.h"
#include "qip/Support/qipAssert.h"

namespace {

// The component library has no options of its own. The pass over the words still ends at, and takes
// out, the first end-of-options word.
const option frameworkOptions[] = {{nullptr, 0, nullptr}};

} // namespace

int main(int argc, char** argv)
{
    qipAssertAs(theApplication != nullptr, "theApplication != 0");
    cmdln_onUsage(usage);
    cmdln_register(frameworkOptions);
    cmdln_parse(&argc, argv);
    theApplication->initialize(argc, argv);
    theApplication->appMain(argc, argv);
    return 0;
}
