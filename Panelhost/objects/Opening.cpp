#include "Panelhost/objects/Opening.h"

#include "Panelhost/Requests.h"
#include "Panelhost/Root.h"
#include "Panelhost/Trace.h"
#include "Panelhost/objects/PanelRoot.h"

void Opening::PutAside(const std::string& address, int datatype, const void* data) {
    const int size = data == nullptr ? 0 : a_ValueSize(datatype, data);
    if (asked_ != nullptr && !address.empty() && size > 0) {
        const auto* bytes = static_cast<const char*>(data);
        asked_->Keep({address, datatype, std::string(bytes, bytes + size)});
    }
}

void Opening::Supersede(const std::string& address) {
    if (!waiting_.IsEmpty()) {
        waiting_.Drop(address);
    }
}

void Opening::SendLater(logic::OpeningValues values) {
    waiting_.Add(std::move(values));
    waiting_.Start(GetTickCount64());
}

void Opening::Send(PanelRoot& root) {
    if (waiting_.IsEmpty() || IsUnderWay()) {
        return;
    }
    for (logic::OpeningValues::Value& value : waiting_.All()) {
        if (!waiting_.Has(value.address)) { // superseded by what another one led to
            continue;
        }
        REQUESTLIST requests;
        a_BuildRequestList({value.address}, {}, &root, requests);
        REQUESTITEM& item = requests.front();
        item.address.reset(); // sending it supersedes nothing
        const bool isDone = item.target != nullptr ||
                            a_SendToItem(item, COMMAND_SET, value.datatype, value.bytes.data()) >= 0;
        if (!a_IsAlive(&root)) {
            return;
        }
        if (isDone) {
            waiting_.Drop(value.address);
        }
    }
    for (const logic::OpeningValues::Value& value : waiting_.Expire(GetTickCount64())) {
        EDITTRACE(&root, "Not sent at opening: %s", value.address.c_str());
    }
}

bool a_IsLoading(const HOSTINFO* object) {
    const PanelRoot* root = PanelRoot::Above(object);
    return root != nullptr && root->opening.IsUnderWay();
}
