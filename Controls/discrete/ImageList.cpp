// BIMAGELIST: one picture out of several, picked by a whole number. The pictures are files of their own or
// the frames of one. Clicked, it can send the next number. Geometry in pixels.

#include "Controls/drawing/StretchedBitmap.h"
#include "Controls/drawing/TextColours.h"
#include "Controls/families/Button.h"
#include "Panelhost/Trace.h"
#include "logic/controls/ImageChoice.h"
#include "logic/text/Numbers.h"
#include "logic/text/PropertyLine.h"

#include <deque>
#include <optional>

class IMAGELISTPROPERTIES : public BUTTONPROPERTIES {
public:
    KeywordList Keywords() const override;
    void SetDefaults() override {
        BUTTONPROPERTIES::SetDefaults();
        interval = 250;
    }
    int PreferredWidth() const override;
    BitmapParts Frames() const override;
    bool IsSizedByFace() const override { return HasPictures() && stretch == 0; }
    void Poll() override;
    void Draw(HDC dc, const RECT& client) const override;
    bool IsHeldDown() const override { return isHeld_; }
    void SetHeldDown(bool down) override { isHeld_ = down; }
    void Released() override;

    int Value() const { return value; }
    bool SetValue(int number);
    std::string Images() const { return images; }
    bool SetImages(const std::string& text);
    std::string Substitute() const { return substitute ? std::to_string(*substitute) : ""; }
    bool SetSubstitute(const std::string& text);
    // The direction that the next release steps in.
    void HeldBackwards(bool isBack) { isBack_ = isBack; }

    int value = 0;
    std::string images; // names of files, joined by ";"; empty for the frames of the bitmap
    int frames = 1;
    int first = 0; // number of the first picture
    std::optional<int> substitute;
    int stretch = 0;
    int step = 0;
    int wrap = 1;

private:
    logic::NumberedImages Numbers() const;
    std::optional<int> Place() const { return Numbers().PlaceOf(value, substitute); }
    bool HasPictures() const { return !files_.empty() || face.Get() != nullptr; }
    void Show(int number);

    std::deque<BitmapProperty> files_; // of the images
    bool isHeld_ = false;
    bool isBack_ = false;
};

// Keywords

namespace {

constexpr int MOST_FRAMES = 1024;

constexpr Keyword VALUE = Property<&IMAGELISTPROPERTIES::Value, &IMAGELISTPROPERTIES::SetValue>("value").Says(
    "The number of the picture. Set, its picture is shown and, unless it is the old one, it is sent to "
    "everything the control is bound to.");

constexpr KeywordTable KEYWORDS({
    VALUE.AsDefault(),
    // In front of the pictures, which then leave the size as it is.
    Limited<&IMAGELISTPROPERTIES::stretch, 0, 1, &IMAGELISTPROPERTIES::BitmapChanged>("stretch")
        .Saved()
        .OneOf("0,1")
        .Label("Stretch to the size")
        .Says(
            "1: the picture is stretched to the size of the control; 0: the first picture gives the control "
            "its size."),
    Picture<&IMAGELISTPROPERTIES::face>("bitmap")
        .Saved()
        .Label("Bitmap")
        .Items(IDC_BITMAP_NAME, IDC_CHOOSE_BITMAP)
        .Says("Image file with the pictures side by side; not used while there are `images`."),
    CONNECTION_KEYWORD,
    Property<&IMAGELISTPROPERTIES::Substitute, &IMAGELISTPROPERTIES::SetSubstitute>("default",
                                                                                    KeywordKind::Integer)
        .Saved()
        .MayBeEmpty()
        .Label("Picture for other numbers")
        .Says("Number of the picture that is shown for a number without one; empty for none."),
    Integer<&IMAGELISTPROPERTIES::first, std::numeric_limits<int>::min(), std::numeric_limits<int>::max(),
            &IMAGELISTPROPERTIES::Redraw>("first")
        .Saved()
        .Label("Number of the first")
        .Says("Number of the first picture."),
    Limited<&IMAGELISTPROPERTIES::frames, 1, MOST_FRAMES, &IMAGELISTPROPERTIES::BitmapChanged>("frames")
        .Saved()
        .Label("Frames of the bitmap")
        .Items(IDC_FRAMES)
        .Says("Number of pictures in `bitmap`, up to 1024."),
    FUNCTION_KEYWORD,
    Property<&IMAGELISTPROPERTIES::Images, &IMAGELISTPROPERTIES::SetImages>("images")
        .Saved()
        .Flagged(KEYWORD_FILE)
        .Label("Images")
        .Says("Image files, one a picture, joined by `;`, relative to the application folder; empty for the "
              "frames of `bitmap`. With one that cannot be read the line is refused."),
    INTERVAL_KEYWORD,
    LAYER_KEYWORD,
    LEVEL_KEYWORD,
    Limited<&IMAGELISTPROPERTIES::step, 0, 1>("step")
        .Saved()
        .OneOf("0,1")
        .Label("A click steps")
        .Says("1: a click sends the next number, with Shift the one before; 0: it only shows."),
    VALUE,
    Limited<&IMAGELISTPROPERTIES::wrap, 0, 1>("wrap")
        .Saved()
        .OneOf("0,1")
        .Label("From the last to the first")
        .Says("1: steps lead from the last number to the first and back; 0: they end there."),
});

} // namespace

KeywordList IMAGELISTPROPERTIES::Keywords() const {
    return KEYWORDS.List();
}

bool IMAGELISTPROPERTIES::SetValue(int number) {
    if (number != value) {
        Show(number);
        Send(number);
    }
    return true;
}

bool IMAGELISTPROPERTIES::SetImages(const std::string& text) {
    std::deque<BitmapProperty> files;
    for (const std::string& file : logic::SplitList(text)) {
        if (!files.emplace_back().Load(file)) {
            EDITTRACE(parent, "%s is no image", file.c_str());
            return false;
        }
    }
    std::string kept = text;
    images.swap(kept);
    files_.swap(files);
    BitmapChanged();
    return true;
}

bool IMAGELISTPROPERTIES::SetSubstitute(const std::string& text) {
    const auto number = logic::ParseWholeInteger(text);
    if (!text.empty() && !number) {
        return false;
    }
    substitute = number;
    Redraw();
    return true;
}

// Pictures

logic::NumberedImages IMAGELISTPROPERTIES::Numbers() const {
    const bool isOneFile = files_.empty() && face.Get() != nullptr;
    return {first, isOneFile ? frames : static_cast<int>(files_.size())};
}

// What gives the control its size.
BitmapParts IMAGELISTPROPERTIES::Frames() const {
    return files_.empty() ? BitmapParts(*face.Get(), frames) : BitmapParts(*files_.front().Get(), 1);
}

int IMAGELISTPROPERTIES::PreferredWidth() const {
    return IsSizedByFace() ? Frames().Width() : CONTROLPROPERTIES::PreferredWidth();
}

// Value

void IMAGELISTPROPERTIES::Show(int number) {
    const auto before = Place();
    value = number;
    if (Place() != before) {
        Redraw();
    }
}

void IMAGELISTPROPERTIES::Poll() {
    int polled = value;
    const int result = Ask(requests, DATATYPE_INTEGER, &polled);
    if (result == REQUEST_DELIVERED) {
        Show(polled);
    }
    ShowPollResult(result);
}

void IMAGELISTPROPERTIES::Released() {
    ShowHeldDown(false);
    if (const auto number = Numbers().Next(value, isBack_, wrap != 0)) {
        SetValue(*number);
    }
}

// Drawing

void IMAGELISTPROPERTIES::Draw(HDC dc, const RECT& client) const {
    const auto place = Place();
    if (!HasPictures() && mode != 0) { // an outline to take it by
        SetDCBrushColor(dc, ReadableOn(GetPixel(dc, client.right / 2, client.bottom / 2)));
        FrameRect(dc, &client, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
    }
    if (!place) {
        return;
    }
    const BitmapParts parts =
        files_.empty() ? Frames() : BitmapParts(*files_[static_cast<std::size_t>(*place)].Get(), 1);
    const int part = files_.empty() ? *place : 0;
    if (stretch != 0) {
        DrawStretched(dc, parts, part, client);
    } else {
        parts.Draw(dc, part, (client.right - parts.Width()) / 2, (client.bottom - parts.Height()) / 2,
                   {0, 0, parts.Width(), parts.Height()});
    }
}

// Input and registration

namespace {

LRESULT CALLBACK ImageListProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    auto& list = *PropertiesOf<IMAGELISTPROPERTIES>(window);
    if (list.step == 0 && !list.dragging) {
        return IndicatorProc(window, message, wParam, lParam);
    }
    if (message == WM_LBUTTONDBLCLK) { // the second press of two
        message = WM_LBUTTONDOWN;
    }
    if (message == WM_LBUTTONDOWN) {
        list.HeldBackwards((wParam & MK_SHIFT) != 0);
    } else if (message == WM_KEYDOWN) {
        list.HeldBackwards(GetKeyState(VK_SHIFT) < 0);
    }
    return ButtonProc(window, message, wParam, lParam);
}

} // namespace

extern const ControlImplementation imageListControl = Implement<IMAGELISTPROPERTIES>(
    ImageListProc, LAID_OUT,
    "One picture out of several, picked by a number; a click can send the next number.");
