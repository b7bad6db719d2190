// The documents that everything is measured on: settings as programs keep them.
#pragma once

#include <cstddef>
#include <string>

namespace bench {

inline constexpr std::size_t manyItems = 50'000; // about 5 MB
inline constexpr std::size_t fewItems = 20;      // about 2 KB

// `item` elements with numbers as ids from 0 on, one of ten kinds, a name and an integer value, and
// now and then what else occurs in such files. Laid out as an editor would; the same every time.
std::string settings(std::size_t items);

std::string const& largeSettings();
std::string const& smallSettings();

// ASCII and everything else from UTF-8, for libraries that leave it to their callers, and back.
std::wstring widened(char const* utf8, std::size_t size);
std::string narrowed(wchar_t const* wide, std::size_t size);

} // namespace bench
