// Makes libxml2 read the documents of a schema from memory, and nothing else from anywhere.
#pragma once

#include <libxml/xmlIO.h>

#include "SchemaDocuments.h"

namespace tibxml::validation {

// While this lives, the calling thread's libxml2 finds the documents under their names and no file
// at all: the library has no such setting for one schema, but it has one for each thread. What was
// set before holds again afterwards.
class ServedDocuments {
public:
    explicit ServedDocuments(SchemaDocuments const& documents) noexcept;
    ServedDocuments(ServedDocuments const&) = delete;
    ServedDocuments& operator=(ServedDocuments const&) = delete;
    ~ServedDocuments();

private:
    SchemaDocuments const* before_;
    xmlParserInputBufferCreateFilenameFunc inputBefore_;
};

} // namespace tibxml::validation
