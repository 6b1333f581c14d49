#pragma once

#include "Controls/families/ItemSource.h"
#include "Controls/families/ListField.h"

#include <string>

// Base of the controls whose value is a text that is chosen from a drop-down list, sent to everything they
// are bound to, and polled back.
class LISTPROPERTIES : public TEXTLOOKPROPERTIES, protected ListField::Owner {
public:
    // The window of the list, which is made later.
    explicit LISTPROPERTIES(const HWND& listWindow) : list(*this, listWindow, *this) {}

    void Poll() override;
    void ShowValueAnew() override { list.Show(); }
    bool OffersApply() const override { return true; }
    void Apply() override { Send(); }

    virtual bool IsSorted() const { return false; }
    // Whether what is chosen is not the value yet.
    virtual bool IsUndecided() const { return false; }

    void Send();
    void Fill() { list.Fill(source.Get(), IsSorted()); }

    int ValueKeyword(VALUERECORD& record);
    std::string ItemsText() const { return source.Text(); }
    bool SetItems(const std::string& text);
    std::string ItemsFunction() const { return source.Functions(); }
    bool SetItemsFunction(const std::string& text);

    std::string value;
    ItemSource source;
    ListField list;

protected:
    std::string HeldValue() const override { return value; }
    void TakeChosen(const std::string& chosen) override { value = chosen; }
    void SendChosen() override { Send(); }

private:
    void FillIfChanged();
};
