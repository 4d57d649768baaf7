// A program without windows of its own, for the tests of the entry.
#include "qip/Base/qipApplication.h"

namespace {

struct Startup
{
    Startup() { new qipApplication("generic"); } // reached through theApplication
} startup;

} // namespace
