#include "observation.h"

#include "classes.h"
#include "handle.h"
#include "modelview.h"
#include "reports.h"
#include "text.h"

#include <memory>
#include <qob/qob/observer.h>
#include <utility>

namespace velum::python {

namespace {

py::object objectOf(QOB::ObjectChange const& change, HoldRef const& near) {
    return py::reinterpret_steal<py::object>(wrapNear(change.object(), near));
}

/// The one value or None; of a property with many a tuple of them.
py::object valueOf(std::vector<QOB::Object> const& values, bool isMany, HoldRef const& near) {
    if (isMany) {
        return tupleOf(values, [&](QOB::Object const& each) { return anyToPython(each, near); });
    }
    return values.empty() ? py::none() : anyToPython(values.front(), near);
}

py::object toPython(QOB::ObjectChange const& change, HoldRef const& near) {
    py::dict values;
    for (QOB::ImmutableProperty const& property : change.properties()) {
        bool const isMany = property.isMultiValued();
        values[textToPython(pythonNameOf(property))] =
            py::make_tuple(valueOf(change.oldValues(property), isMany, near),
                           valueOf(change.newValues(property), isMany, near));
    }
    return newReport("ObjectChange", objectOf(change, near), values);
}

/// Calls a function of Python with what has changed. Observes until it is stopped or collected, or
/// the model ends.
class Observation final : public QOB::Observer {
public:
    Observation(ModelView const& view, py::object callback)
        : hold_(view.hold), callback_(std::move(callback)) {
        observe(view.handle());
    }
    ~Observation() override { stop(); }

    void changed(QOB::Changes const& changes) override {
        py::object const callback = callback_; // may stop and drop this
        auto const objects = [this](std::vector<QOB::ObjectChange> const& all) {
            return tupleOf(all, [this](auto const& each) { return objectOf(each, hold_); });
        };
        callback(newReport("Changes",
                           objects(changes.created()),
                           objects(changes.destroyed()),
                           tupleOf(changes.changed(),
                                   [this](auto const& each) { return toPython(each, hold_); })));
    }

    void end() {
        hold_->requireThread();
        stop();
    }
    bool isActive() const {
        hold_->requireThread();
        return isObserving();
    }

    static int traverse(PyObject* self, visitproc visit, void* arg) { // Py_VISIT names them
        Py_VISIT(Py_TYPE(self));
        if (Observation const* const observation = in(self)) {
            Py_VISIT(observation->callback_.ptr());
        }
        return 0;
    }
    static int clear(PyObject* self) {
        if (Observation* const observation = in(self)) {
            observation->stop();
            py::object const dropped = std::move(observation->callback_);
        }
        return 0;
    }

private:
    /// Null while it is made.
    static Observation* in(PyObject* self) {
        auto* const instance = reinterpret_cast<py::detail::instance*>(self);
        return static_cast<Observation*>(instance->simple_value_holder[0]);
    }

    HoldRef hold_;
    py::object callback_;
};

std::unique_ptr<Observation> observe(ModelView const& view, py::object callback) {
    if (PyCallable_Check(callback.ptr()) == 0) {
        raise(PyExc_TypeError,
              "observe() takes a function, not " + typeNameOf(callback.ptr()) + ".");
    }
    return std::make_unique<Observation>(view, std::move(callback));
}

} // namespace

void addObservations(py::module_& module) {
    auto const isCollected = py::custom_type_setup([](PyHeapTypeObject* type) {
        type->ht_type.tp_flags |= Py_TPFLAGS_HAVE_GC;
        type->ht_type.tp_traverse = &Observation::traverse;
        type->ht_type.tp_clear = &Observation::clear;
    });
    py::class_<Observation>(module,
                            "Observation",
                            isCollected,
                            "Calls a function after each change for as long as it is kept.")
        .def("stop", &Observation::end, "Ends the calls.")
        .def_property_readonly(
            "is_active", &Observation::isActive, "Whether changes are still reported.")
        .def("__enter__", [](py::object self) { return self; })
        .def("__exit__", [](Observation& observation, py::args const&) { observation.end(); });
    module.attr("Model").attr("observe") =
        py::cpp_function(&observe,
                         py::name("observe"),
                         py::is_method(module.attr("Model")),
                         py::arg("callback"),
                         "Calls a function with velum.Changes after each change. Keep the result: "
                         "the calls end with it.");
}

} // namespace velum::python
