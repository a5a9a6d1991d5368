#include "reports.h"

#include "handle.h"
#include "text.h"

namespace velum::python {

namespace {

py::object toPython(arxml::Place const& place) {
    return newReport("Place", place.position.line, place.position.column, textToPython(place.path));
}

py::object toPython(arxml::Finding const& finding) {
    return newReport("Finding",
                     code(finding.reason),
                     finding.isFault,
                     textToPython(finding.text),
                     textToPython(finding.target),
                     finding.count,
                     tupleOf(finding.places, [](auto const& each) { return toPython(each); }));
}

py::object toPython(arxml::Omission const& omission) {
    return newReport("Omission",
                     toPython(omission.place),
                     textToPython(omission.element),
                     code(omission.reason),
                     textToPython(omission.text));
}

py::object toPython(arxml::FileReport const& file) {
    return newReport("FileReport",
                     textToPython(file.file),
                     tupleOf(file.consumed,
                             [](arxml::ConsumedElements const& each) {
                                 return newReport(
                                     "ConsumedElements", textToPython(each.element), each.count);
                             }),
                     tupleOf(file.skipped,
                             [](arxml::SkippedElements const& each) {
                                 return newReport("SkippedElements",
                                                  textToPython(each.element),
                                                  code(each.reason),
                                                  each.count,
                                                  toPython(each.first));
                             }),
                     tupleOf(file.omissions, [](auto const& each) { return toPython(each); }),
                     tupleOf(file.findings, [](auto const& each) { return toPython(each); }),
                     file.elementCount,
                     file.consumedCount,
                     file.skippedCount);
}

} // namespace

py::object reportClass(char const* name) {
    // Never freed: the interpreter may be gone when static objects are.
    static auto const& module = *new py::object(py::module_::import("velum.reports"));
    return module.attr(name);
}

py::object toPython(arxml::Report const& report) {
    py::dict classes;
    for (arxml::ClassCount const& each : report.classes) {
        classes[textToPython(each.metaclass)] = each.count;
    }
    return newReport("ReadReport", classes, tupleOf(report.files, [](auto const& each) {
                         return toPython(each);
                     }));
}

py::object toPython(arxml::WriteReport const& report) {
    return newReport("WriteReport",
                     tupleOf(report.files, [](auto const& each) { return textToPython(each); }),
                     report.objects,
                     report.bytes,
                     tupleOf(report.findings, [](arxml::WriteFinding const& each) {
                         return newReport("WriteFinding",
                                          code(each.remark),
                                          textToPython(each.path),
                                          textToPython(each.text));
                     }));
}

py::object toPython(QOB::LoadReport const& report, HoldRef const& near) {
    return newReport(
        "LoadReport",
        tupleOf(report.skipped,
                [](QOB::SkippedElement const& each) {
                    return newReport("SkippedName", textToPython(each.name), each.count);
                }),
        tupleOf(report.unresolved, [&near](QOB::UnresolvedReference const& each) {
            return newReport("UnresolvedReference",
                             py::reinterpret_steal<py::object>(wrapNear(each.object, near)),
                             textToPython(each.property),
                             each.position,
                             textToPython(each.uri),
                             each.id);
        }));
}

} // namespace velum::python
