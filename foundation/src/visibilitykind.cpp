#include "qob/kernel/handle/outofline.h"
#include "velum_foundation/zorvane/metamodel/foundation/zorvanemetamodelfoundationvisibilitykind.h"
#include "velum_foundation/zorvane/metamodel/kindimpl.h"

namespace Zorvane::metamodel::foundation {

void VisibilityKindLiterals::fail(char const* text) {
    QOB::internal::failAt(__FILE__, __LINE__, text);
}

} // namespace Zorvane::metamodel::foundation

template class Zorvane::metamodel::Kind<Zorvane::metamodel::foundation::VisibilityKind,
                                        Zorvane::metamodel::foundation::VisibilityKindLiterals>;

template struct QOB::internal::OutOfLineFunction<
    static_cast<unsigned (*)(Zorvane::metamodel::foundation::VisibilityKind const&) noexcept>(
        &Zorvane::metamodel::foundation::hash_value)>;
