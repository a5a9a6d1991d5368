#pragma once

#include "modelhold.h"

#include <qob_store/store.h>
#include <velum_arxml/findings/report.h>
#include <velum_arxml/writing/write_report.h>

/// The reports of the libraries as the dataclasses of velum.reports.
namespace velum::python {

py::object toPython(arxml::Report const& report);
py::object toPython(arxml::WriteReport const& report);
py::object toPython(QOB::LoadReport const& report, HoldRef const& near);

/// A dataclass of velum.reports. The module is loaded when the first is needed.
py::object reportClass(char const* name);

/// Makes a dataclass of velum.reports of its fields, in their order.
template <class... Fields>
py::object newReport(char const* name, Fields&&... fields) {
    return reportClass(name)(std::forward<Fields>(fields)...);
}

/// A tuple of what a function makes of each element.
template <class Elements, class Make>
py::tuple tupleOf(Elements const& elements, Make const& make) {
    py::tuple made(elements.size());
    for (std::size_t i = 0; i != elements.size(); ++i) {
        made[i] = make(elements[i]);
    }
    return made;
}

} // namespace velum::python
