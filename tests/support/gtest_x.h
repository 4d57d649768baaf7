// GoogleTest before any X header: X.h and Xlib.h define None, Bool, Success and Status as macros,
// after which GoogleTest does not compile. Every test that meets X includes this header first.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>
