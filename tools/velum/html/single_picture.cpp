#include "html/single_picture.h"

#include "html/out.h"
#include "html/table_section.h"

#include <utility>
#include <vector>

namespace velum::html {

SinglePicture pictureOf(QOB::ClassObject const& object, Constants const& constants) {
    types::ConstantSpecification constant(object);
    types::LookupTableType table(object);
    if (constant.isValid()) {
        table = constants.tableOf(constant);
    } else if (table.isValid()) {
        const std::vector<types::ConstantSpecification> filling = constants.of(table);
        if (filling.empty()) {
            return {{}, "No constant in the files fills this table."};
        }
        if (filling.size() > 1) {
            return {{}, "Several constants fill this table; name one of them."};
        }
        constant = filling.front();
    }
    const types::LookupTableSpecification values =
        constant.isValid() ? tableIn(constant) : types::LookupTableSpecification();
    if (!values.isValid()) {
        return {{}, "This is neither a curve nor a map, nor a constant that holds one."};
    }
    SinglePicture picture;
    Out out([&picture](std::string_view piece) {
        picture.svg += piece;
        return true;
    });
    if (!writePicture(out, lookupOf(values, table))) {
        return {{}, "This table has more than two axes; \"velum report\" draws it."};
    }
    out.finish();
    return picture;
}

} // namespace velum::html
