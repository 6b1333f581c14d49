#pragma once

#include "Panelhost/dialogs/BindableTree.h"
#include "Panelhost/dialogs/BindingIcons.h"
#include "Panelhost/dialogs/Dialog.h"
#include "Panelhost/dialogs/resource.h"

#include <array>
#include <string>
#include <vector>

// The dialog in which functions and connections of an object are chosen: left what its panel offers, right
// what is bound. Every change is sent at once as a property line.
class ConnectionDialog : public ObjectDialog {
public:
    static constexpr int TEMPLATE = IDD_CONNECTIONS;
    explicit ConnectionDialog(HOSTINFO* object) : ObjectDialog(TEMPLATE, object) {}

private:
    struct Entry {
        std::string address;
        bool reachable;
    };

    // One of the two lists of what is bound.
    struct BoundList {
        const char* keyword;
        const char* name; // in messages
        BINDINGLIST HOSTINFO::*bindings;
        int id;
        std::vector<Entry> shown{};
    };
    using Addresses = std::vector<std::string>;

    void OnCreate() override;
    bool OnObjectMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) override;
    void OnResized() override;
    void Refresh() override;
    bool IsHeader(int id) const override {
        return id == IDC_HEADER_AVAILABLE || id == IDC_HEADER_FUNCTIONS || id == IDC_HEADER_CONNECTIONS;
    }

    // What is bound.
    BoundList& ListFor(const Bindable& bindable) { return lists_[bindable.IsFunction() ? 0 : 1]; }
    BoundList* ListOf(HWND view);
    BoundList* ActiveList(); // the one with the selected entry; null when none is selected
    Addresses Bound(const BoundList& list) const;
    void ShowBound(BoundList& list);
    bool IsBound(const Bindable& bindable) const;
    int FindBound(const Addresses& addresses, const std::string& address) const;
    bool Takes(const BoundList& list) const;
    REQUESTITEM Resolve(const std::string& address) const;
    bool IsReachable(const std::string& address) const;

    // Changes.
    void Search();
    void Add();
    void Remove();
    void Move(int step);
    bool Apply(BoundList& list, const Addresses& addresses, const std::string& done);

    void Say(const std::string& text) const { SetWindowTextA(Item(IDC_STATUS), text.c_str()); }
    void UpdateButtons();
    void Enable(int id, bool enabled) const;
    void OnCommand(int id, int code);
    bool OnListNotify(const BoundList& list, const NMHDR& header, LRESULT& result);
    bool OnKey(HWND item, WPARAM key);
    bool OnDoubleClick(POINT place);
    std::optional<LRESULT> OnPartMessage(HWND part, UINT message, WPARAM wParam, LPARAM lParam) override;

    ImageList icons_;
    BindableTree tree_;
    std::array<BoundList, 2> lists_{{{"function", "functions", &HOSTINFO::functions, IDC_FUNCTIONS},
                                     {"connection", "connections", &HOSTINFO::connections, IDC_CONNECTIONS}}};
};
