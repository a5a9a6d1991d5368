#pragma once

#include "qob/qob/attributes.h"
#include "qob/qob/compare.h"
#include "qob/qob/model.h"
#include "qob/qob/sequence.h"
#include "velum_types/tests/support/described.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <random>
#include <sstream>
#include <string>
#include <vector>

/// What the tests of stores share.
namespace StoreTest {

/// A folder that goes with the test.
class Folder {
public:
    Folder() {
        std::string name = (std::filesystem::temp_directory_path() / "store-XXXXXX").string();
        if (mkdtemp(name.data()) == nullptr) {
            throw std::runtime_error("no temporary folder");
        }
        path_ = name;
    }
    Folder(Folder const&) = delete;
    Folder& operator=(Folder const&) = delete;
    ~Folder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    std::string file(std::string const& name) const { return (path_ / name).string(); }

private:
    std::filesystem::path path_;
};

/// Everything that a model says of itself, object by object in its order from a position on. What
/// mirrors the references of others has no order.
template <class Show>
std::string contentOf(QOB::Model const& model, int first, Show const& show) {
    QOB::Attributes attributes;
    std::ostringstream text;
    text << model.getUri() << '\n';
    int position = 0;
    for (QOB::ClassObject const object : model.getRootObjectsWithoutAssociation()) {
        if (position++ < first) {
            continue;
        }
        text << object.getLumvoName(false) << ' ' << show(object) << " in "
             << show(object.getContainerQOB()) << '\n';
        for (QOB::Attribute const& attribute : attributes.of(object)) {
            std::vector<std::string> values;
            for (QOB::Object const& value : attribute.valuesOf(object)) {
                if (value.isValid()) { // a reference to an object that has ended is none
                    values.push_back(show(value));
                }
            }
            if (attribute.isOtherEnd) {
                std::sort(values.begin(), values.end());
            }
            text << "  " << attribute.name;
            for (std::string const& value : values) {
                text << ' ' << value;
            }
            text << '\n';
        }
    }
    return text.str();
}

inline std::string contentOf(QOB::Model const& model) {
    return contentOf(model, 0, [](QOB::Object const& value) { return VelumTest::show(value); });
}

/// A model of objects of all classes with properties of all kinds, the same for the same seed.
class RandomModel {
public:
    explicit RandomModel(unsigned seed) : random_(seed) {}

    QOB::Model model() const { return world_.model; }

    void create(int count);
    /// Sets, removes, adds; some objects end.
    void write(int count);
    /// Objects keep their ids from now on.
    void keepIds() { keepsIds_ = true; }

    unsigned below(std::size_t bound) {
        return static_cast<unsigned>(random_() % std::max<std::size_t>(bound, 1));
    }

private:
    struct Made {
        QOB::ClassObject object;
        VelumTest::ConcreteClass const* of;
    };

    void writeOne(Made const& made, VelumTest::Property const& property);
    void writeNotes(QOB::ClassObject const& object);
    /// A value that the property may take; empty if there is none.
    QOB::Object valueFor(Made const& made, VelumTest::Property const& property);
    std::vector<VelumTest::Property> const& propertiesOf(VelumTest::ConcreteClass const& of);

    VelumTest::World world_;
    std::mt19937 random_;
    std::vector<Made> made_;
    bool keepsIds_ = false;
    std::vector<std::pair<VelumTest::ConcreteClass const*, std::vector<VelumTest::Property>>>
        properties_;
};

} // namespace StoreTest
