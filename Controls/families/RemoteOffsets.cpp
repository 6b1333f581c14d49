#include "Controls/families/RemoteOffsets.h"

#include "Controls/framework/KeywordHandlers.h"

#include <cmath>

namespace {

bool Ask(const REQUESTITEM& item, float& remote) {
    float answer = remote;
    if (a_SendToItem(item, COMMAND_GET, DATATYPE_FLOAT, &answer) <= 0 || !std::isfinite(answer)) {
        return false;
    }
    remote = answer;
    return true;
}

} // namespace

void RemoteOffsets::Rebuild(const CONTROLPROPERTIES& owner, float value) {
    std::vector<logic::OffsetRecord> fresh; // what is asked may rebuild them
    for (const REQUESTITEM& item : relative != 0 ? ItemsOf(owner.requests) : std::vector<REQUESTITEM>()) {
        // What is not there yet keeps its place, and goes along unshifted when it comes.
        const bool exists = item.target != nullptr || item.handler != nullptr;
        float remote = 0;
        Ask(item, remote);
        logic::AppendOffset(fresh, {exists ? remote - value : 0.0F, remote, 0.0F});
    }
    records.swap(fresh);
}

void RemoteOffsets::Send(const CONTROLPROPERTIES& owner, float value, int command) {
    const std::vector<REQUESTITEM> items = ItemsOf(owner.requests);
    const std::vector<logic::OffsetRecord> known = records; // what a connection does may rebuild them
    for (std::size_t i = 0; i < items.size(); ++i) {
        float remote = value + (i < known.size() ? known[i].offset : 0.0F);
        if (command == COMMAND_SET) {
            a_SendToItem(items[i], COMMAND_SET, DATATYPE_FLOAT, &remote);
        } else if (Ask(items[i], remote) && i < records.size() && remote != records[i].lastRemote) {
            records[i].lastRemote = remote;
            records[i].offset = remote - value;
        }
    }
}

void RemoteOffsets::See(const CONTROLPROPERTIES& owner) {
    const std::vector<REQUESTITEM> items = ItemsOf(owner.requests);
    for (std::size_t i = 0; i < items.size() && i < records.size(); ++i) {
        float remote = records[i].lastRemote;
        if (Ask(items[i], remote) && i < records.size()) {
            records[i].lastRemote = remote;
        }
    }
}

int RemoteOffsets::Keyword(VALUERECORD* record, CONTROLPROPERTIES& owner, float logic::OffsetRecord::*number,
                           std::size_t step) {
    if (relative == 0) {
        return IgnoredKeyword(record, &owner);
    }
    if (record->command == COMMAND_GET) {
        return a_AnswerText(record, logic::OffsetsText(records, number).c_str());
    }
    const auto text = TextToSet(record);
    const auto numbers = text ? logic::ParseFloats(*text) : std::nullopt;
    if (!numbers || !HasRoomForOffsets(owner, numbers->size())) {
        return 0;
    }
    // What is behind as many as can be saved belongs to no binding.
    for (std::size_t i = 0; i < numbers->size() && records.size() < logic::MAXIMUM_OFFSETS; i += step) {
        logic::OffsetRecord loaded;
        loaded.*number = (*numbers)[i];
        logic::AppendOffset(records, loaded);
    }
    return 1;
}
