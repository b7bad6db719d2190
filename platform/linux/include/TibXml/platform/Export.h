#pragma once

// Marks what the shared library offers to its callers. Everything else stays hidden, so that the
// library's own symbols neither collide with a caller's nor become promises by accident. It goes on
// functions and classes that are defined out of line; inline code needs no symbol.
#define TIBXML_API __attribute__((visibility("default")))
