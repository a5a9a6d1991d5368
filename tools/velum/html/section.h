#pragma once

#include "html/constants.h"
#include "html/contents.h"
#include "html/out.h"
#include "html/type_pictures.h"

namespace velum::html {

/// What sections are written of.
struct Subject {
    Contents& contents;
    Constants const& constants;
    Sizes& sizes;
};

/// A link to the section of an object; its bare name if it has none.
void writeLink(Out& out, Contents& contents, QOB::ClassObject const& object);
void writeLink(Out& out, Entry const& entry);

/// A finding as an item of a list.
void writeFinding(Out& out, Finding const& finding);

/// Begins the section of an object; what is written next stands behind its class, in the heading.
void beginSection(Out& out, Entry const& entry);

/// The section of one object: what it is, its pictures, properties, parts and links.
void writeSection(Out& out, Subject const& subject, Entry const& entry);

/// What is particular to a class: the parts of an object as tables and pictures.
void writeParts(Out& out, Subject const& subject, QOB::ClassObject const& object);

} // namespace velum::html
