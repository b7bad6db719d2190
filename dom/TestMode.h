#pragma once

namespace tibxml::dom {

/// Whether this process runs unit tests, which it shows by a loaded module of a certain name. Found
/// out once, when it is first asked, for the whole life of the process.
bool isTestMode() noexcept;

} // namespace tibxml::dom
