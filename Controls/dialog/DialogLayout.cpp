#include "Controls/dialog/DialogLayout.h"

#include "Controls/resources/resource.h"

#include <algorithm>
#include <commctrl.h>
#include <cstring>
#include <string>

namespace {

// In dialog units.
struct Box {
    int left, top, width, height;
};

constexpr int LINE_HEIGHT = 12;
constexpr int PITCH = 15;
constexpr int FIRST_LINE = 50;
constexpr int MOST_IN_ONE_COLUMN = 5;
constexpr int NARROW = 332; // as wide as those of knob, fader and meter
constexpr int WIDE = 452;
constexpr int LIST_DROPPED = 60;
constexpr int CHOOSER_WIDTH = 18;
constexpr int GAP = 4;
constexpr int PREVIEW_HEIGHT = 34;
constexpr int STATE_HEIGHT = 11; // of a preview of one line

constexpr DWORD LISTS =
    LVS_REPORT | LVS_SINGLESEL | LVS_SHOWSELALWAYS | LVS_NOSORTHEADER | WS_BORDER | WS_TABSTOP;

// A dialog template in memory, in the extended form.
class Template {
public:
    Template(const std::string& title, int width) {
        AddWord(1); // version and signature of that form
        AddWord(0xFFFF);
        AddLong(0);
        AddLong(0);
        AddLong(DS_SETFONT | WS_POPUP | WS_CAPTION | WS_SYSMENU);
        countAt_ = bytes_.size();
        AddWord(0);
        AddPlace({0, 0, width, 0});
        AddWord(0); // no menu, the class of dialogs
        AddWord(0);
        AddText(title);
        AddWord(8);
        AddWord(FW_NORMAL);
        AddWord(0); // upright, in any character set
        AddText("MS Sans Serif");
    }

    void Add(const char* windowClass, const std::string& text, int id, DWORD style, const Box& place) {
        bytes_.resize((bytes_.size() + 3) / 4 * 4);
        AddLong(0);
        AddLong(0);
        AddLong(style | WS_CHILD | WS_VISIBLE);
        AddPlace(place);
        AddLong(static_cast<DWORD>(id));
        AddText(windowClass);
        AddText(text);
        AddWord(0);
        ++count_;
    }
    void Label(const std::string& text, const Box& place, int id = -1) {
        Add(WC_STATICA, text, id, SS_LEFT | WS_GROUP, place);
    }
    void Header(const char* text, int id, const Box& place) {
        Add(WC_STATICA, text, id, SS_CENTER | SS_CENTERIMAGE | WS_GROUP, place);
    }
    void Button(const char* text, int id, const Box& place) {
        Add(WC_BUTTONA, text, id, BS_PUSHBUTTON | WS_TABSTOP, place);
    }
    void List(int id, const Box& place, DWORD style = 0) {
        Add(WC_COMBOBOXA, "", id, CBS_DROPDOWNLIST | WS_VSCROLL | WS_TABSTOP | style, place);
    }

    std::vector<DWORD> Finished(int height) {
        const auto put = [this](std::size_t place, int number) {
            const auto value = static_cast<WORD>(number);
            std::memcpy(bytes_.data() + place, &value, sizeof value);
        };
        put(countAt_, count_);
        put(countAt_ + 8, height);
        std::vector<DWORD> aligned(bytes_.size() / 4 + 1);
        std::memcpy(aligned.data(), bytes_.data(), bytes_.size());
        return aligned;
    }

private:
    void AddWord(int word) {
        bytes_.push_back(static_cast<BYTE>(word));
        bytes_.push_back(static_cast<BYTE>(word >> 8));
    }
    void AddLong(DWORD number) {
        AddWord(static_cast<WORD>(number));
        AddWord(static_cast<WORD>(number >> 16));
    }
    void AddPlace(const Box& place) {
        for (const int number : {place.left, place.top, place.width, place.height}) {
            AddWord(number);
        }
    }
    void AddText(const std::string& text) { // ours are plain letters
        for (const char character : text) {
            AddWord(static_cast<unsigned char>(character));
        }
        AddWord(0);
    }

    std::vector<BYTE> bytes_;
    std::size_t countAt_ = 0;
    int count_ = 0;
};

// Where the fields of a column stand.
struct Column {
    int label, labelWidth, field, fieldWidth;
};
constexpr Column ONLY{18, 115, 141, 148};
constexpr Column LEFT{18, 106, 126, 94};
constexpr Column RIGHT{238, 106, 346, 94};
constexpr Column ROW{18, 106, 126, 314};

bool NeedsRow(const DialogField& field) {
    return field.preview != 0 || field.info->kind == KeywordKind::Line;
}

void AddField(Template& dialog, const DialogField& field, const Column& column, int top) {
    dialog.Add(WC_STATICA, field.label, -1, SS_LEFT | SS_CENTERIMAGE | WS_GROUP,
               {column.label, top, column.labelWidth, LINE_HEIGHT});
    const bool hasChooser = field.chooser != 0;
    const int width = column.fieldWidth - (hasChooser ? CHOOSER_WIDTH + GAP : 0);
    const Box place{column.field, top, width, LINE_HEIGHT};
    switch (field.input) {
    case DialogField::Input::List:
        dialog.List(field.item, {column.field, top - 1, width, LIST_DROPPED});
        break;
    case DialogField::Input::Picture:
        dialog.Add(WC_STATICA, "-", field.item,
                   SS_LEFT | SS_CENTERIMAGE | SS_NOPREFIX | SS_PATHELLIPSIS | WS_GROUP, place);
        break;
    default:
        dialog.Add(WC_EDITA, "", field.item, ES_LEFT | ES_AUTOHSCROLL | WS_BORDER | WS_TABSTOP, place);
    }
    if (hasChooser) {
        dialog.Button("...", field.chooser, {column.field + width + GAP, top, CHOOSER_WIDTH, LINE_HEIGHT});
    }
}

// A field with what stands below it. Answers the height.
int AddRow(Template& dialog, const DialogField& field, int top) {
    AddField(dialog, field, ROW, top);
    int below = top + PITCH;
    if (field.preview != 0) {
        const int height = field.info->kind == KeywordKind::Text ? PREVIEW_HEIGHT : STATE_HEIGHT;
        dialog.Add(WC_STATICA, "", field.preview, SS_LEFT | SS_NOPREFIX | SS_SUNKEN | WS_GROUP,
                   {ROW.field, below - 1, ROW.fieldWidth, height});
        below += height + GAP;
    }
    if (field.info->kind == KeywordKind::Line) {
        constexpr Box OBJECT{126, 0, 128, 120};
        constexpr Box KEYWORD{260, 0, 118, 120};
        constexpr Box INSERT{384, 0, 56, 13};
        const auto at = [below](Box place) {
            place.top = below;
            return place;
        };
        dialog.List(IDC_TEMPLATE_OBJECT, at(OBJECT));
        dialog.List(IDC_TEMPLATE_KEYWORD, at(KEYWORD));
        dialog.Button("Insert", IDC_TEMPLATE_INSERT, at(INSERT));
        below += PITCH + GAP;
    }
    return below - top;
}

void AddHead(Template& dialog, int width) {
    const int inner = width - 20;
    dialog.Label("Select Control Object", {10, 8, 94, 14}, IDC_SELECTOR_LABEL);
    dialog.List(IDC_OBJECT_SELECTOR, {110, 8, inner - 158, 107}, CBS_SORT);
    dialog.Button("Delete", IDC_DELETE_CONTROL, {width - 53, 8, 43, 14});
    dialog.Add(WC_STATICA, "", -1, SS_ETCHEDHORZ, {10, 29, inner, 1});
    dialog.Header("PROPERTIES", IDC_PROPERTIES_HEADER, {10, 35, inner, 11});
}

// Answers the height of the dialog.
int AddFoot(Template& dialog, int width, int top) {
    const int half = (width - 38) / 2;
    const int right = width - 10 - half;
    constexpr int LIST_HEIGHT = 80;
    dialog.Header("FUNCTIONS", IDC_FUNCTIONS_HEADER, {10, top, half, 11});
    dialog.Header("CONNECTIONS", IDC_CONNECTIONS_HEADER, {right, top, half, 11});
    dialog.Button("Modify Functions / Connections", IDC_MODIFY_CONNECTIONS,
                  {(width - 146) / 2, top + 16, 146, 14});
    dialog.Add(WC_LISTVIEWA, "", IDC_FUNCTION_LIST, LISTS, {10, top + 36, half, LIST_HEIGHT});
    dialog.Add(WC_LISTVIEWA, "", IDC_CONNECTION_LIST, LISTS, {right, top + 36, half, LIST_HEIGHT});
    const int buttons = top + 36 + LIST_HEIGHT + 8;
    dialog.Add(WC_STATICA, "", IDC_DIALOG_STATUS, SS_LEFT | SS_NOPREFIX | WS_GROUP,
               {10, buttons - 3, (width - 50) / 2 - 17, 20});
    dialog.Button("Close", IDC_CLOSE_DIALOG, {(width - 50) / 2, buttons, 50, 14});
    dialog.Button("Advanced ...", IDC_ADVANCED, {width - 69, buttons, 59, 14});
    return buttons + 26;
}

} // namespace

std::vector<DWORD> LayOutDialog(const std::string& title, const std::vector<DialogField>& fields) {
    std::vector<DialogField> columns;
    std::vector<DialogField> rows;
    std::partition_copy(fields.begin(), fields.end(), std::back_inserter(rows), std::back_inserter(columns),
                        NeedsRow);
    const bool isNarrow = rows.empty() && columns.size() <= MOST_IN_ONE_COLUMN;
    const int width = isNarrow ? NARROW : WIDE;
    Template dialog(title, width);
    AddHead(dialog, width);
    const std::size_t inFirst = isNarrow ? columns.size() : (columns.size() + 1) / 2;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const auto line = static_cast<int>(i < inFirst ? i : i - inFirst);
        AddField(dialog, columns[i], isNarrow ? ONLY : i < inFirst ? LEFT : RIGHT, FIRST_LINE + line * PITCH);
    }
    int top = FIRST_LINE + static_cast<int>(inFirst) * PITCH + (rows.empty() ? 0 : GAP);
    for (const DialogField& field : rows) {
        top += AddRow(dialog, field, top);
    }
    return dialog.Finished(AddFoot(dialog, width, top + GAP));
}
