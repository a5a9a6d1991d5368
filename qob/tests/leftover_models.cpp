// A host that ends without ending its models: with cycles, open branches and transactions, undo
// stacks and handles in statics. What the library then fails to free, the leak checker reports.

#include "qob/qob/modelcache.h"
#include "qob/qob/transaction.h"
#include "thing.h"

namespace {
sample::Thing kept;       // NOLINT(cert-err58-cpp)
QOB::Model keptModel;     // NOLINT(cert-err58-cpp)
QOB::Transaction* opened; // never closed
} // namespace

int main() {
    QOB::Model const model = QOB::NSInterface::FactoryIntf::createNewModel();
    QOB::ModelCache::instance()->bindModel(L"left over", model);
    kept = sample::Thing::create(model, 1);
    sample::Thing const other = sample::Thing::create(model, 2);
    kept.setLink(other);
    other.setLink(kept);
    QOB::Model const branch = model.inDeviant(model.createDeviant());
    kept.in(branch.getDeviant()).setNumber(3);
    model.setUndoEnabled(true);
    {
        QOB::Transaction transaction(model);
        sample::Thing::create(model, 4).destroy();
        other.setNumber(5);
        transaction.commit();
    }
    model.undo();
    static QOB::Transaction open(branch);
    opened = &open;
    sample::Thing::create(branch, 6);
    keptModel = QOB::NSInterface::FactoryIntf::createNewModel();
    return 0;
}
