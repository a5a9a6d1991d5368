#include "writing/element_output.h"

namespace velum::arxml {

void ElementOutput::reference(std::string_view tag, QOB::ClassObject const& target) const {
    if (Outline::Entry const* const entry = outline.find(target)) {
        if (bases != nullptr && !bases->isInFile(*entry)) {
            xml.leaf(tag,
                     {{"DEST", tagOf(entry->kind)}, {"BASE", bases->labelFor(*entry)}},
                     entry->name());
        } else {
            xml.leaf(tag, "DEST", tagOf(entry->kind), entry->path());
        }
        return;
    }
    remark(Remark::dangling,
           "The target \"" + nameOf(target) + "\" of " + std::string(tag) +
               " is no element of a package; the reference isn't written.");
}

void ElementOutput::partName(std::string const& name) const {
    const std::string written = nameInPath(name);
    if (!isIdentifier(name)) {
        remark(Remark::badName, "The name \"" + name + "\" of a part is no identifier.");
    }
    xml.leaf("SHORT-NAME", written.empty() ? "Unnamed" : std::string_view(written));
}

void writeElement(ElementOutput const& out, Outline::Entry const& entry) {
    const OpenElement element(out.xml, tagOf(entry.kind));
    out.xml.leaf("SHORT-NAME", entry.name());
    switch (entry.kind) {
    case ElementKind::baseType:
        writeBaseType(out, types::SwBaseType(entry.object));
        break;
    case ElementKind::unit:
        writeUnit(out, types::Unit(entry.object));
        break;
    case ElementKind::dimension:
        writeDimension(out, types::Dimension(entry.object));
        break;
    case ElementKind::method:
        writeMethod(out, types::CompuMethod(entry.object));
        break;
    case ElementKind::constraint:
        writeConstraint(out, types::DataConstr(entry.object));
        break;
    case ElementKind::constant:
        writeConstant(out, types::ConstantSpecification(entry.object));
        break;
    case ElementKind::implementationType:
        writeImplementationType(out, foundation::ValueType(entry.object));
        break;
    case ElementKind::applicationPrimitive:
    case ElementKind::applicationArray:
    case ElementKind::applicationRecord:
        writeApplicationType(out, foundation::ValueType(entry.object));
        break;
    case ElementKind::layout:
    case ElementKind::none:
        break;
    }
    if (out.xml.takeMended()) {
        out.remark(Remark::badText,
                   "A text has characters that XML can't hold; U+FFFD stands for them.");
    }
}

} // namespace velum::arxml
