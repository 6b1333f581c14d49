#include "Controls/families/ListValue.h"

#include <algorithm>
#include <cstdio>

void LISTPROPERTIES::FillIfChanged() {
    if (source.IsChanged()) {
        Fill();
    }
}

bool LISTPROPERTIES::SetItems(const std::string& text) {
    source.SetText(text);
    FillIfChanged();
    return true;
}

bool LISTPROPERTIES::SetItemsFunction(const std::string& text) {
    const bool isTaken = source.SetFunctions(*this, text);
    FillIfChanged();
    return isTaken;
}

int LISTPROPERTIES::ValueKeyword(VALUERECORD& record) {
    if (record.command == COMMAND_GET) {
        return a_AnswerText(&record, value.c_str());
    }
    std::string text;
    if (record.command != COMMAND_SET || a_ReadText(&record, &text) == 0) {
        return 0;
    }
    if (text != value) {
        value = text;
        list.Show();
        Send();
    }
    return 1;
}

void LISTPROPERTIES::Send() {
    std::string sent = value;
    a_SendRequest(requests, COMMAND_SET, DATATYPE_TEXT, sent.data(), nullptr);
}

void LISTPROPERTIES::Poll() {
    if (list.IsDropped() || IsUndecided()) {
        return;
    }
    int listed = REQUEST_UNCHANGED;
    if (!list.IsBusy()) {
        listed = source.Poll();
        FillIfChanged();
    }
    char text[TEXT_SIZE];
    std::snprintf(text, sizeof text, "%s", value.c_str());
    const int result = Ask(requests, DATATYPE_TEXT, text);
    if (result == REQUEST_DELIVERED) {
        value = text;
        list.Show();
    }
    Answered(requests, DATATYPE_TEXT, result);
    const bool wasNotEqual = notEqual;
    ShowPollResult(listed > REQUEST_DELIVERED ? std::max(listed, result) : result);
    if (notEqual != wasNotEqual) {
        list.LookChanged();
    }
}
