#pragma once

#include <TibXml/EngineCall.h>

namespace tibxml::values {

/// The text value of a target that there is: for an element all text in it, for an attribute its
/// exact value. `_com_error` when the engine fails.
engine::EngineString textOf(WXmlNodePtr const& target);

/// Replaces the text of a target that there is; null is the empty text. `_com_error` when the
/// engine fails or there is no memory.
void setTextOf(WXmlNodePtr const& target, engine::EngineString const& text);

} // namespace tibxml::values
