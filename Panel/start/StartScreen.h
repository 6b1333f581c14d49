#pragma once

#include "Panel/common/Window.h"
#include "Panel/start/RecentFiles.h"
#include "base/Gdi.h"

#include <atomic>
#include <functional>
#include <memory>
#include <string>
#include <vector>

class OSMIRBitmap;

// What the frame shows in place of a panel while none was opened: a new panel, those opened last, and the
// demo panels, each with its picture. Each is a button, so that it has focus, keys and a name for screen
// readers.
class StartScreen : public Window {
public:
    struct Actions {
        std::function<void(const std::string& file)> open;
        // Whether a file that is gone is to be taken off the list.
        std::function<bool(const std::string& file)> askRemoval;
    };
    // What the page looks best in.
    static constexpr SIZE BEST_SIZE{1024, 640};

    ~StartScreen() override;

    bool Create(HWND frame, HFONT font, const RecentFiles& recent, Actions actions);
    bool IsShown() const { return isShown_; }
    // Shown, it lists what there is now. Hidden, it holds nothing.
    void Show(bool shown);
    void MoveTo(const RECT& place) const;
    void TakeFocus();
    // Serves the page's keys: true when the message was one of them.
    bool TranslateKey(const MSG& message);
    // Brings up to date what follows the mouse and the drives.
    void Tick();

private:
    enum class Kind { New, Open, Recent, Demo };
    struct Item {
        Kind kind;
        std::string file; // empty for New and Open
        std::wstring name;
        std::wstring note;
        std::string pictureFile;
        const OSMIRBitmap* picture = nullptr;
        bool isGone = false;
        HWND button = nullptr;
        RECT place{}; // on the whole page
    };
    // A drive may let whoever asks for a file wait for long: this is asked for by a thread of its own.
    struct LookedUp {
        std::string file;
        std::wstring name;                 // in full; to be read once the state is there
        std::atomic<int> state{UNCERTAIN}; // UNCERTAIN, THERE, GONE
    };
    static constexpr int UNCERTAIN = 0;
    static constexpr int THERE = 1;
    static constexpr int GONE = 2;
    using LookedUpFiles = std::vector<LookedUp>;

    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void Fill();
    void Clear();
    void AddCard(Kind kind, const std::string& file, std::wstring name, std::wstring note,
                 const std::string& pictureFile);
    void AddItem(Item item);
    void LookUp();
    void Arrange();
    int ArrangeCards(Kind kind, int top, int columns);
    void ScrollTo(int position);
    void MakeVisible(const RECT& place);
    void Paint();
    void Draw(const DRAWITEMSTRUCT& draw);
    void DrawCommand(HDC dc, const RECT& place, const Item& item, bool isHot) const;
    void DrawCard(HDC dc, const RECT& place, const Item& item, bool isHot) const;
    void DrawPicture(HDC dc, const RECT& well, const Item& item) const;
    void Choose();
    void Remove(const std::string& file);
    void ShowMenu(const Item& item, POINT point);
    Item* ItemOf(HWND button);
    bool FocusBeside(const RECT& from, int key);
    void FocusNext(HWND from, bool backwards);

    const RecentFiles* recent_ = nullptr;
    Actions actions_;
    HFONT font_ = nullptr;
    Font titleFont_;
    Font headingFont_;
    Font nameFont_;
    std::vector<Item> items_;
    std::shared_ptr<LookedUpFiles> lookedUp_;
    RECT recentHeading_{};
    RECT demoHeading_{};
    int height_ = 0;   // of the whole page
    int position_ = 0; // of it that is at the top of the window
    int wheel_ = 0;    // part of a notch not yet used
    HWND hot_ = nullptr;
    std::string chosen_;
    Kind chosenKind_ = Kind::New;
    bool isShown_ = false;
    bool arranging_ = false;
};
