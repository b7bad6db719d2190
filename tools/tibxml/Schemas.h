#pragma once

#include <string>

#include <TibXml/EnginePtr.h>
#include <TibXml/engine/IXMLDOMSchemaCollection.h>

namespace tibxml::tool {

using SchemasPtr = EnginePtr<IXMLDOMSchemaCollection2>;

/// The schema in a file, for the namespace that it has. Throws `Failure` and `_com_error` when it
/// cannot be used.
SchemasPtr loadSchema(std::string const& file);

} // namespace tibxml::tool
