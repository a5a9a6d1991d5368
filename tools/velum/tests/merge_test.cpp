#include "diff/comparison.h"
#include "merge/list_merge.h"
#include "merge/merge.h"
#include "merge/printers.h"
#include "merge/side.h"
#include "model/dictionary.h"
#include "model/objects.h"
#include "model/values.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>
#include <velum_arxml/read.h>
#include <velum_types/types.h>

namespace velum::merge {

namespace {

namespace types = Zorvane::metamodel::types;
namespace foundation = Zorvane::metamodel::foundation;
using model::Dictionary;
using Names = std::vector<std::string>;

Names letters(std::string const& text) {
    Names names;
    for (char const c : text) {
        names.emplace_back(1, c);
    }
    return names;
}

std::string joined(Names const& names) {
    std::string text;
    for (std::string const& name : names) {
        text += name;
    }
    return text;
}

std::string differences(QOB::Model const& left, QOB::Model const& right) {
    std::ostringstream text;
    for (QOB::Difference const& difference : QOB::compare(left, right)) {
        text << difference << '\n';
    }
    return text.str();
}

/// What a person does in an editor, done at random: to objects of whatever class.
class Editor {
public:
    Editor(QOB::Model model, unsigned seed) : model_(std::move(model)), random_(seed) {}

    void change(int count) {
        for (int i = 0; i < count; ++i) {
            changeOnce();
        }
    }

private:
    int below(std::size_t end) { return static_cast<int>(random_() % end); }

    template <class T>
    T any(std::vector<T> const& list) {
        return list[static_cast<std::size_t>(below(list.size()))];
    }

    void changeOnce() {
        QOB::ClassObject const object = any(model::freeObjects(model_));
        switch (below(8)) {
        case 0:
            remove(object);
            break;
        case 1:
            rename(object);
            break;
        case 2:
            add();
            break;
        case 3:
        case 4:
            changeParts(object);
            break;
        default:
            changeValue(object);
        }
    }

    void remove(QOB::ClassObject const& object) {
        if (object.hasExternalId() && !types::Matrix(object).isValid()) { // whose type would stay
            destroy(object);
        }
    }

    /// With all references to it: a file can't have any.
    void destroy(QOB::ClassObject const& object) {
        std::set<void const*> gone{object.get()};
        for (QOB::ClassObject const& each : allObjects(model_)) { // parts behind what they are in
            if (each.hasContainerQOB() && gone.contains(each.getContainerQOB().get())) {
                gone.insert(each.get());
            }
        }
        for (QOB::ClassObject const& each : allObjects(model_)) {
            for (QOB::Attribute const& attribute : attributes_.of(each)) {
                if (!attribute.isReference || attribute.reader != nullptr ||
                    attribute.isWayToOwner || attribute.isOtherEnd) {
                    continue;
                }
                for (QOB::Object const& value : attribute.valuesOf(each)) {
                    if (gone.contains(QOB::ClassObject(value).get())) {
                        each.remove(attribute.property, value);
                    }
                }
            }
        }
        object.destroy();
    }

    /// Objects with parts that have paths of their own keep their name.
    void rename(QOB::ClassObject const& object) {
        foundation::NamedElement const named(object);
        std::string const path = model::pathOf(object);
        if (path.empty() || !named.isValid() || types::Structure(object).isValid() ||
            types::Matrix(object).isValid()) {
            return;
        }
        std::string const name = "Name" + std::to_string(below(1000000));
        named.setName(QOB::String(name));
        object.setExternalId(QOB::String(path.substr(0, path.rfind('/') + 1) + name));
    }

    void add() {
        auto const unit = types::Unit::create(model_);
        std::string const name = "New" + std::to_string(below(40));
        for (QOB::ClassObject const& each : model::freeObjects(model_)) {
            if (model::pathOf(each) == "/New/" + name) {
                unit.destroy();
                return;
            }
        }
        unit.setName(QOB::String(name));
        unit.setExternalId(QOB::String("/New/" + name));
        unit.setSymbol(QOB::String(std::to_string(below(3))));
    }

    void changeParts(QOB::ClassObject const& object) {
        for (QOB::Attribute const& attribute : attributes_.of(object)) {
            std::vector<QOB::Object> values = attribute.valuesOf(object);
            if (!attribute.ownsObjects || !attribute.isMultiValued || values.size() < 2) {
                continue;
            }
            if (below(2) == 0) {
                destroy(QOB::ClassObject(any(values)));
                return;
            }
            std::swap(values.front(), values.back());
            object.remove(attribute.property);
            for (QOB::Object const& value : values) {
                object.setOrAdd(attribute.property, value);
            }
            return;
        }
    }

    void changeValue(QOB::ClassObject const& outer) {
        QOB::ClassObject object = outer;
        for (auto parts = model::containedIn(object); !parts.empty() && below(2) == 0;
             parts = model::containedIn(object)) {
            object = any(parts);
        }
        std::vector<QOB::Attribute const*> choice;
        for (QOB::Attribute const& each : attributes_.of(object)) {
            bool const isPlain = each.reader == nullptr && !each.isMultiValued &&
                                 !each.ownsObjects && !each.isWayToOwner && each.name != "Name" &&
                                 each.name != "Visibility" && diff::isOwnFact(each);
            if (isPlain && !each.valuesOf(object).empty()) {
                choice.push_back(&each);
            }
        }
        if (!choice.empty()) {
            set(object, *any(choice));
        }
    }

    void set(QOB::ClassObject const& object, QOB::Attribute const& attribute) {
        QOB::Object const value = attribute.valuesOf(object).front();
        switch (model::kindOf(value)) {
        case model::ValueKind::text:
            object.setOrAdd(attribute.property, QOB::String("text " + std::to_string(below(9))));
            break;
        case model::ValueKind::number:
            object.setOrAdd(attribute.property, QOB::Real(static_cast<double>(below(99)) + 0.5));
            break;
        case model::ValueKind::integer:
            object.setOrAdd(attribute.property, QOB::Integer(below(99)));
            break;
        case model::ValueKind::truth:
            object.setOrAdd(attribute.property, QOB::Boolean(QOB::Boolean(value) != true));
            break;
        case model::ValueKind::reference:
            if (QOB::ClassObject(value).hasExternalId()) { // else nothing would have the target
                object.removeOne(attribute.property);
            }
            break;
        default:
            break;
        }
    }

    QOB::Model model_;
    QOB::Attributes attributes_;
    std::mt19937 random_;
};

/// The samples, changed at random.
class Release {
public:
    explicit Release(unsigned seed = 0, int changes = 0) {
        std::string const samples = VELUM_SAMPLES;
        arxml::read({samples + "/platform.arxml", samples + "/gearbox.arxml"}, model());
        QOB::Transaction transaction(model());
        Editor(model(), seed).change(changes);
        transaction.commit();
    }
    QOB::Model const& model() const { return dictionary_.model(); }

private:
    Dictionary dictionary_;
};

Resolutions all(Taken taken) {
    Resolutions resolutions;
    for (auto const& [kind, word] : conflictKinds) {
        resolutions.emplace(kind, taken);
    }
    return resolutions;
}

} // namespace

TEST(ListMerge, TakesTheOrderOfTheSideThatChangedIt) {
    struct Case {
        char const* base;
        char const* ours;
        char const* theirs;
        char const* merged;
        char const* mergedTheirsFirst; ///< Differs only where the order is open.
    };
    Case const cases[] = {
        {"abc", "abc", "abc", "abc", "abc"},
        {"abc", "abxc", "abc", "abxc", "abxc"},
        {"abc", "abc", "aybc", "aybc", "aybc"},
        {"abc", "xabc", "abcy", "xabcy", "xabcy"},
        {"abc", "ac", "ab", "a", "a"},
        {"abc", "cab", "abyc", "caby", "caby"},
        {"abc", "abxc", "cab", "cabx", "cabx"},
        {"abc", "abcx", "abcy", "abcxy", "abcyx"},
        {"", "xy", "z", "xyz", "zxy"},
        {"abc", "bac", "acb", "bac", "acb"},
        {"ab", "axb", "abx", "axb", "abx"},
        {"abc", "axc", "ayc", "axyc", "ayxc"},
    };
    for (Case const& each : cases) {
        ListVersions const versions{letters(each.base), letters(each.ours), letters(each.theirs)};
        MergedList const merged = mergeLists(versions);
        EXPECT_EQ(joined(merged.names), each.merged);
        EXPECT_EQ(joined(mergeLists(versions, true).names), each.mergedTheirsFirst);
        EXPECT_EQ(merged.isAmbiguous,
                  std::string_view(each.merged) != std::string_view(each.mergedTheirsFirst));
    }
}

TEST(ListMerge, HasWhatBothLeftAndWhatEitherAdded) {
    std::mt19937 random(7);
    for (int round = 0; round < 3000; ++round) {
        Names base = letters(std::string("abcdefg").substr(0, random() % 8));
        auto const edited = [&](std::string const& fresh) {
            Names list = base;
            std::erase_if(list, [&](std::string const&) { return random() % 4 == 0; });
            for (char const c : fresh) {
                if (random() % 2 == 0) {
                    list.insert(list.begin() +
                                    static_cast<std::ptrdiff_t>(random() % (list.size() + 1)),
                                std::string(1, c));
                }
            }
            if (random() % 3 == 0) {
                std::shuffle(list.begin(), list.end(), random);
            }
            return list;
        };
        ListVersions const versions{base, edited("vwx"), edited("xyz")};
        std::set<std::string> expected;
        for (Names const* const side : {&versions.ours, &versions.theirs}) {
            Names const& other = side == &versions.ours ? versions.theirs : versions.ours;
            for (std::string const& name : *side) {
                bool const isOld = std::find(base.begin(), base.end(), name) != base.end();
                bool const isInBoth = std::find(other.begin(), other.end(), name) != other.end();
                if (!isOld || isInBoth) {
                    expected.insert(name);
                }
            }
        }
        ListVersions const turned{base, versions.theirs, versions.ours};
        for (bool const areTheirsFirst : {false, true}) {
            MergedList const merged = mergeLists(versions, areTheirsFirst);
            EXPECT_EQ(std::set<std::string>(merged.names.begin(), merged.names.end()), expected);
            EXPECT_EQ(merged.names.size(), expected.size());
            EXPECT_EQ(merged.names, mergeLists(turned, !areTheirsFirst).names);
            if (!merged.isAmbiguous) {
                EXPECT_EQ(merged.names, mergeLists(versions, !areTheirsFirst).names);
            }
        }
        EXPECT_EQ(mergeLists({base, base, versions.theirs}).names, versions.theirs);
        EXPECT_EQ(mergeLists({base, versions.ours, base}).names, versions.ours);
    }
}

TEST(Merge, OfOneChangedSideIsThatSide) {
    for (unsigned seed = 1; seed <= 30; ++seed) {
        SCOPED_TRACE(seed);
        Release const base;
        Release const changed(seed, 12);
        Release const same;
        Outcome const taken = mergeModels(base.model(), same.model(), changed.model(), {});
        EXPECT_TRUE(taken.isMerged()) << printText(taken);
        EXPECT_EQ(differences(same.model(), changed.model()), "");
        Release const ours(seed, 12);
        Release const again;
        Outcome const left = mergeModels(base.model(), ours.model(), again.model(), {});
        EXPECT_TRUE(left.isMerged()) << printText(left);
        EXPECT_EQ(left.changeCount, 0U);
        EXPECT_EQ(differences(ours.model(), changed.model()), "");
        EXPECT_EQ(differences(base.model(), again.model()), "") << "the base isn't as before";
    }
}

/// Without conflicts it doesn't matter whose side is whose; with conflicts nothing changes until
/// they are decided.
TEST(Merge, IsTheSameFromBothSides) {
    int merged = 0;
    int contradicted = 0;
    for (unsigned seed = 1; seed <= 40; ++seed) {
        SCOPED_TRACE(seed);
        Release const base;
        Release const ours(seed, 15);
        Release const theirs(seed + 1000, 15);
        Outcome const outcome = mergeModels(base.model(), ours.model(), theirs.model(), {});
        Release const turned(seed + 1000, 15);
        Release const untouched(seed, 15);
        Outcome const back = mergeModels(base.model(), turned.model(), untouched.model(), {});
        EXPECT_EQ(outcome.isMerged(), back.isMerged()) << printText(outcome) << printText(back);
        if (outcome.isMerged()) {
            ++merged;
            EXPECT_EQ(differences(ours.model(), turned.model()), "");
            continue;
        }
        ++contradicted;
        EXPECT_EQ(differences(ours.model(), untouched.model()), "");
        EXPECT_TRUE(
            mergeModels(base.model(), ours.model(), theirs.model(), all(Taken::ours)).isMerged());
        EXPECT_TRUE(mergeModels(base.model(), turned.model(), untouched.model(), all(Taken::theirs))
                        .isMerged());
    }
    EXPECT_GT(merged, 5);
    EXPECT_GT(contradicted, 5);
}

} // namespace velum::merge
