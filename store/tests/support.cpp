#include "support.h"

#include "qob/qob/stereotypeobject.h"

#include <cmath>
#include <limits>

namespace StoreTest {

namespace {

double const reals[] = {0.0,
                        -0.0,
                        1.0,
                        0.1,
                        1e300,
                        -5e-324,
                        std::numeric_limits<double>::infinity(),
                        std::numeric_limits<double>::quiet_NaN(),
                        123456789.25};
int const integers[] = {0,
                        1,
                        -1,
                        std::numeric_limits<int>::max(),
                        std::numeric_limits<int>::min() + 1};
std::string const texts[] = {"",
                             "plain",
                             "0",
                             "1e5",
                             "-0",
                             "nan",
                             "quo'te\"d; DROP TABLE object",
                             "line\nbreak\ttab",
                             "</script></svg><b a='",
                             "\xe2\x80\xaeturned around",
                             "\xc3\xa4\xe2\x82\xac",
                             "\xff\xfe not UTF-8",
                             std::string("with\0zero", 9)};

} // namespace

void RandomModel::create(int count) {
    auto const& classes = VelumTest::allClasses();
    for (int i = 0; i < count; ++i) {
        VelumTest::ConcreteClass const& of = classes[below(classes.size())];
        made_.push_back({world_.create(of), &of});
    }
}

std::vector<VelumTest::Property> const&
RandomModel::propertiesOf(VelumTest::ConcreteClass const& of) {
    for (auto const& [known, properties] : properties_) {
        if (known == &of) {
            return properties;
        }
    }
    std::vector<VelumTest::Property> writable;
    for (VelumTest::Property const& property : VelumTest::propertiesOf(of.methods)) {
        if (!property.isDerived() && VelumTest::inPlaceOf(property, of.methods) == property) {
            writable.push_back(property);
        }
    }
    return properties_.emplace_back(&of, std::move(writable)).second;
}

void RandomModel::write(int count) {
    for (int i = 0; i < count && !made_.empty(); ++i) {
        std::size_t const place = below(made_.size());
        Made const made = made_[place];
        if (!made.object.isValid()) {
            made_[place] = made_.back();
            made_.pop_back();
        } else if (unsigned const way = below(100); way == 0) {
            made.object.destroy();
        } else if (way < 8) {
            writeNotes(made.object);
        } else {
            auto const& properties = propertiesOf(*made.of);
            writeOne(made, properties[below(properties.size())]);
        }
    }
}

void RandomModel::writeOne(Made const& made, VelumTest::Property const& property) {
    try {
        QOB::Object const value = valueFor(made, property);
        bool const removes = value.get() == nullptr || below(8) == 0;
        if (property.isMany()) {
            auto const elements = property.elements(made.object);
            if (!removes) {
                elements.insert(static_cast<int>(below(std::size_t(elements.size()) + 1)), value);
            } else if (!elements.empty()) {
                elements.erase(static_cast<int>(below(std::size_t(elements.size()))));
            }
        } else if (removes) {
            property.remove(made.object);
        } else {
            property.set(made.object, value);
        }
    } catch (QOB::Exception const&) { // a circle, or an owner without a list for the object
    }
}

void RandomModel::writeNotes(QOB::ClassObject const& object) {
    switch (below(keepsIds_ ? 3 : 4)) {
    case 0:
        object.setExternalId("/path/" + std::to_string(below(1'000'000)));
        break;
    case 1:
        object.setExternalToolInfo(
            {"key" + std::to_string(below(3)), texts[below(std::size(texts))]});
        break;
    case 2: {
        auto const stereotype = QOB::StereotypeObject::create(world_.model, "marked");
        stereotype.setValue(texts[below(std::size(texts))]);
        object.getAppliedStereotypeInstances().push_back(stereotype);
        break;
    }
    default:
        world_.model.bindObjectId(object,
                                  below(2) == 0 ? QOB::Integer() : world_.model.allocateObjectId());
        break;
    }
}

QOB::Object RandomModel::valueFor(Made const& made, VelumTest::Property const& property) {
    if (!property.isReference()) {
        QOB::Object sample = VelumTest::sampleValue(property, static_cast<int>(below(2)));
        std::string const type = sample.getLumvoName(false);
        if (type == QOB::Real::getTypeName()) {
            return QOB::Real(reals[below(std::size(reals))]);
        }
        if (type == QOB::Integer::getTypeName()) {
            return QOB::Integer(integers[below(std::size(integers))]);
        }
        if (type == QOB::String::getTypeName()) {
            return QOB::String(texts[below(std::size(texts))]);
        }
        return sample;
    }
    for (int tries = 0; tries < 30; ++tries) {
        Made const& candidate = made_[below(made_.size())];
        if (candidate.object.isValid() &&
            VelumTest::takes(property, made.of->methods, *candidate.of)) {
            return candidate.object;
        }
    }
    return {};
}

} // namespace StoreTest
