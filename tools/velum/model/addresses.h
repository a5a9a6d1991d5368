#pragma once

#include <qob/qob.h>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace velum::model {

/// Names for all objects of a model, those without a path too. Keeps what it found out: it is for a
/// model that doesn't change meanwhile.
class Addresses {
public:
    /// The path of the object. If it has none, that of what is around it and the place in there
    /// ("/P/Kinds#OwnedLiteral/low"); if nothing is, class and name ("#Dimension/Length"). No two
    /// objects of a model share an address.
    std::string of(QOB::ClassObject const& object);

    /// What contains the object. Where objects contain each other, one of them counts as contained
    /// in nothing, so that every way outwards ends.
    static QOB::ClassObject containerOf(QOB::ClassObject const& object);
    /// Whether a value of the owner's property is a part of it, by that.
    static bool isPart(QOB::Attribute const& attribute,
                       QOB::ClassObject const& value,
                       QOB::ClassObject const& owner);

    /// What contains the object. What nothing contains and has neither path nor name, as the type
    /// of the values of an array, belongs to the first object that refers to it. Empty if there is
    /// none.
    QOB::ClassObject around(QOB::ClassObject const& object);
    /// The last object on the way outwards.
    QOB::ClassObject outermost(QOB::ClassObject const& object);

    /// The place of an object in what is around it, however far out: property and name for each
    /// step
    /// ("Elements/speed/InlineType"). Objects of one name are numbered ("Slot/x[2]"), those without
    /// a name too ("ownedCell[3]"). Empty for the object itself.
    std::string place(QOB::ClassObject const& object, QOB::ClassObject const& within);

    /// The property by which an object belongs to what is around it; empty if nothing is.
    std::string const& owningProperty(QOB::ClassObject const& object);

    QOB::Attributes& attributes() { return attributes_; }

private:
    struct Step {
        std::string property;
        std::string text;
    };

    Step const& stepOf(QOB::ClassObject const& object);
    void addSteps(QOB::ClassObject const& owner);
    void findUsers(QOB::Model const& model);
    void addUses(QOB::ClassObject const& user, std::vector<QOB::ClassObject>& reached);
    std::string const& nameOfPathless(QOB::ClassObject const& object);

    QOB::Attributes attributes_;
    std::unordered_map<void const*, Step> steps_;
    std::unordered_map<void const*, QOB::ClassObject>
        users_; ///< Of what belongs to its first user.
    bool areUsersFound_ = false;
    std::unordered_map<void const*, std::string> pathless_;
};

} // namespace velum::model
