// Makes libxml2 read the documents of a schema from memory, and nothing else from anywhere.
#pragma once

#include "SchemaDocuments.h"
#include "ThreadInput.h"

namespace tibxml::validation {

// While this lives, the calling thread's libxml2 finds the documents under their names and no file
// at all.
class ServedDocuments {
public:
    explicit ServedDocuments(SchemaDocuments const& documents) noexcept;
    ServedDocuments(ServedDocuments const&) = delete;
    ServedDocuments& operator=(ServedDocuments const&) = delete;
    ~ServedDocuments();

private:
    SchemaDocuments const* before_;
    reader::ThreadInput input_;
};

} // namespace tibxml::validation
