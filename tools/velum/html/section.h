#pragma once

#include "html/constants.h"
#include "html/contents.h"
#include "html/out.h"

namespace velum::html {

/// What sections are written of.
struct Subject {
    Contents& contents;
    Constants const& constants;
};

/// A link to the section of an object; its bare name if it has none.
void writeLink(Out& out, Contents& contents, QOB::ClassObject const& object);
void writeLink(Out& out, Entry const& entry);

/// A finding as an item of a list.
void writeFinding(Out& out, Finding const& finding);

/// The section of one object: what it is, its pictures, properties, parts and links.
void writeSection(Out& out, Subject const& subject, Entry const& entry);

/// All properties of an object and of what it contains that no picture or table shows.
void writeProperties(Out& out, Contents& contents, QOB::ClassObject const& object);

/// What is particular to a class: the parts of an object as tables and pictures.
void writeParts(Out& out, Subject const& subject, QOB::ClassObject const& object);

} // namespace velum::html
