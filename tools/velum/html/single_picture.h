#pragma once

#include "html/constants.h"

#include <qob/qob.h>
#include <string>

namespace velum::html {

/// A picture as a file of its own, or why there is none.
struct SinglePicture {
    std::string svg;
    std::string fault; ///< A sentence; empty if there is a picture.
};

/// The picture of a curve or a map: of a constant that holds one, or of a table type that a
/// constant fills.
SinglePicture pictureOf(QOB::ClassObject const& object, Constants const& constants);

} // namespace velum::html
