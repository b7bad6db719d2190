// Documents read in the ways in which they come.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include <reader/Reader.h>
#include <tree/Document.h>

#include "Trace.h"

namespace tibxml::reader::test {

struct Reading {
    tree::DocumentRef document = tree::DocumentRef::adopt(tree::Document::create());
    ReadError error;
    bool done = false;

    tree::Node* top() const { return document->node(); }

    // The root element, which has to be there.
    tree::Node* root() const;
};

Reading readBytes(Bytes source, bool preserveWhiteSpace = false);
Reading readText(std::string_view utf8, bool preserveWhiteSpace = false);

// A line for the content of the document: <name a='v'>, "text", [cdata], <!comment>, <?target data>
// and </>; a mark for each dropped run of white space: | after a node, ~ at the start of a parent.
std::string shape(Reading const& reading);

// What must hold after a failure: the reason is given and nothing of a tree shows.
void expectFailure(Reading const& reading, std::string_view what);

} // namespace tibxml::reader::test
