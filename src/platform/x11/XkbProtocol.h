#pragma once

// The protocol library's header is written for C and names fields with a word of C++. The standard
// headers that it includes come first, so that the word is replaced in that header alone.
#include <cstdint>

#include <xcb/xcb.h>

#if defined(__clang__)
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wkeyword-macro"
#endif
#define explicit explicit_  // NOLINT
#include <xcb/xkb.h>
#undef explicit
#if defined(__clang__)
#pragma clang diagnostic pop
#endif
