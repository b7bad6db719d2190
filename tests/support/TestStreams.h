#pragma once

#include <TibXml/EnginePtr.h>
#include <TibXml/platform/Stream.h>

#include <cstddef>
#include <functional>
#include <limits>
#include <string>

constexpr std::size_t never = std::numeric_limits<std::size_t>::max();

/// A stream that gives at most `step` bytes a read, and fails once `failAfter` bytes are gone.
EnginePtr<IStream> slowStream(std::string bytes, std::size_t step, std::size_t failAfter = never);

/// A stream that gives `bytes` and then, instead of an end, throws what `thrown` throws.
EnginePtr<IStream> throwingStream(std::string bytes, std::function<void()> thrown);

/// A stream that repeats `part`, `count` times, between `head` and `tail`: the bytes are made while
/// they are read, so that a large document exists only once.
EnginePtr<IStream> repeatingStream(std::string head, std::string part, std::size_t count,
                                   std::string tail);
