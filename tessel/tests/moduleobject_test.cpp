#include "tessel/moduleobject.h"

#include <boost/checked_delete.hpp>
#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <string>

namespace {

using Tessel::ModuleObject;
using Tessel::ModuleObjectDeleter;
using Tessel::ModuleObjectImpl;

struct Traced {
    Traced(std::string& traceLog, char mark) : log(traceLog), name(mark) {}
    Traced(Traced const&) = delete;
    Traced& operator=(Traced const&) = delete;
    virtual ~Traced() { log += name; }
    std::string& log;
    char name;
};

using TracedModule = ModuleObjectImpl<Traced*, boost::checked_deleter<Traced>>;

TEST(ModuleObject, EndsTheHeldObjectOnce) {
    std::string log;
    {
        TracedModule object(new Traced(log, 'a'));
        object.deleteObject();
        EXPECT_EQ(log, "a");
        object.deleteObject();
    }
    EXPECT_EQ(log, "a");
    { TracedModule object(new Traced(log, 'b')); }
    EXPECT_EQ(log, "ab");
    { TracedModule empty(nullptr); }
    EXPECT_EQ(log, "ab");
}

TEST(ModuleObjectDeleter, DeletesInReverseOrderOfEntry) {
    std::string log;
    {
        ModuleObjectDeleter deleter;
        deleter.append(std::make_unique<TracedModule>(new Traced(log, '1')));
        deleter.append(std::make_unique<TracedModule>(nullptr));
        deleter.append(std::make_unique<TracedModule>(new Traced(log, '2')));
        EXPECT_THROW(deleter.append(nullptr), std::invalid_argument);
        EXPECT_EQ(deleter.size(), 3U);
        EXPECT_EQ(log, "");
    }
    EXPECT_EQ(log, "21");
}

TEST(ModuleObjectDeleter, DeletesWhatIsAppendedWhileItEnds) {
    struct Late final : ModuleObject {
        Late(ModuleObjectDeleter& target, std::string& traceLog) : deleter(target), log(traceLog) {}
        ~Late() override {
            deleter.append(std::make_unique<TracedModule>(new Traced(log, 'n')));
            log += 'l';
        }
        ModuleObjectDeleter& deleter;
        std::string& log;
    };
    std::string log;
    {
        ModuleObjectDeleter deleter;
        deleter.append(std::make_unique<TracedModule>(new Traced(log, '1')));
        deleter.append(std::make_unique<Late>(deleter, log));
    }
    EXPECT_EQ(log, "ln1");
}

} // namespace
