#pragma once

#include "comparison.h"
#include "model/modelcore.h"

#include <boost/unordered/unordered_flat_map.hpp>

#include <cstddef>
#include <span>
#include <unordered_map>
#include <utility>
#include <vector>

namespace QOB::internal {

/// What the objects of one class have in two models. Most classes have attributes for objects that
/// none of theirs uses: those needn't be looked at again.
struct ClassUse {
    explicit ClassUse(std::vector<Attribute> const& attributes);

    /// Takes an object's attributes with values off those without.
    void note(ClassObject const& object);
    /// Sorts the attributes once all objects have been noted. The anonymous ones are of these
    /// classes.
    void sort(std::vector<ImmutableClass> const& anonymous);

    std::vector<Attribute> const* all;
    std::vector<Attribute const*> unused; ///< For objects; none of those noted has a value.
    // In the order of `all`:
    std::vector<Attribute const*> parts;       ///< They own objects.
    std::vector<Attribute const*> references;  ///< They may refer to anonymous objects.
    std::vector<Attribute const*> toAnonymous; ///< Of these; some object does.
    std::vector<Attribute const*> compared;
};

/// Compares all objects of two models.
class ModelComparison {
public:
    ModelComparison() : comparison_(true, true) {}

    std::vector<Difference> compare(Model const& left, Model const& right);

private:
    struct Pair {
        ClassObject left;
        ClassObject right;
        bool haveSameParts = false; ///< Known to own pairs, in the same order.
    };

    /// The objects of a model that nothing contains.
    struct FreeObjects {
        std::vector<ClassObject> known;     ///< By an external id or a name.
        std::vector<ClassObject> anonymous; ///< With neither.
        /// Whether something refers to an anonymous one.
        boost::unordered_flat_map<void const*, bool> isReferred;

        bool isAnonymous(ClassObject const& object) const {
            return isReferred.contains(object.get());
        }
        bool noteReferred(std::vector<Object> const& values);
    };

    ClassUse& useOf(ClassObject const& object);
    FreeObjects freeObjects(Model const& model);
    void findReferred(Model const& model, FreeObjects& found);
    std::vector<ImmutableClass> classesOfAnonymous() const;
    static std::vector<ClassObject> unplaced(FreeObjects const& side);
    void addReferredWithoutPartner();
    template <class Objects, class Identity>
    bool pairObjects(Objects const& lefts, Objects const& rights, Identity const& identity);
    template <class Object, class Identity>
    void pairByIdentity(std::span<Object const> lefts,
                        std::span<Object const> rights,
                        Identity const& identity);
    void pairWhatTheyHave(std::size_t next);
    bool pairParts(Pair const& owners, ClassUse const& use);
    void pairAnonymous(Pair const& users, ClassUse const& use);
    void compareObjects(Pair const& pair, bool haveSameId);

    Comparison comparison_;
    Attributes attributes_;
    std::unordered_map<std::vector<Attribute> const*, ClassUse> uses_;
    void const* lastClass_ = nullptr; ///< Objects of one class mostly follow each other.
    ClassUse* lastUse_ = nullptr;
    FreeObjects left_;
    FreeObjects right_;
    std::vector<Pair> pairs_; ///< In the order in which they were found.
};

} // namespace QOB::internal
