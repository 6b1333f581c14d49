#include "Panelhost/files/PanelLoading.h"

#include "Panelhost/Editing.h"
#include "Panelhost/HostInterface.h"
#include "Panelhost/Trace.h"
#include "Panelhost/objects/ControlClasses.h"
#include "base/DrawingHeld.h"
#include "logic/editing/Groups.h"

namespace {

constexpr DWORD PROGRESS_PERIOD = 50; // milliseconds, at least, from one call of who watches to the next

// The same parts of a copy of the line, which has an "=".
logic::PropertyLine PartsOf(std::string_view copy, const std::string& line,
                            const logic::PropertyLine& parts) {
    const std::string_view rest = copy.substr(static_cast<std::size_t>(parts.keyword.data() - line.data()));
    const std::size_t length = parts.keyword.size();
    return {copy.substr(0, parts.object.size()), rest.substr(0, length), rest.substr(length + 1), true};
}

// The part of a line that is not the name of its object: keyword and value, or all there is without "=".
std::string_view WithoutObject(const std::string& line, const logic::PropertyLine& parts) {
    const char* start = parts.hasEquals ? parts.keyword.data() : parts.value.data();
    return std::string_view(line).substr(static_cast<std::size_t>(start - line.data()));
}

// The name that a header gives, as far as it can be made out.
std::string NameInHeader(std::string_view value) {
    const auto start = value.find('"');
    const auto end = start == std::string_view::npos ? start : value.find('"', start + 1);
    return end == std::string_view::npos ? "" : logic::CleanName(value.substr(start + 1, end - start - 1));
}

std::string PathOf(const logic::PropertyLine& parts) {
    return parts.object.empty() ? "" : std::string(parts.object) + "*";
}

// Whether the object has the value already, which some answer as they do a refusal.
bool Holds(const HOSTINFO& object, const KEYWORDROW* table, const logic::PropertyLine& parts) {
    char value[TEXT_SIZE] = "";
    const int row = a_FindKeyword(table, parts.keyword);
    if (row <= 0 || (table[row].flags & KEYWORD_SAVED) == 0) {
        return false;
    }
    VALUERECORD record = VALUERECORD::GetText(value, row);
    SendMessageA(object.window, CWM_MESSAGE, 0, reinterpret_cast<LPARAM>(&record));
    return parts.value == value;
}

int ReasonOfRefusal(const KEYWORDROW* table, const logic::PropertyLine& parts) {
    if (table != nullptr && a_FindKeyword(table, parts.keyword) < 0) {
        return PH_UNREAD_KEYWORD;
    }
    const bool isColour = parts.value.starts_with("0x");
    return parts.keyword == "bitmap" || (parts.keyword == "background" && !isColour) ? PH_UNREAD_PICTURE
                                                                                     : PH_UNREAD_VALUE;
}

} // namespace

void PanelLoading::Fail(const char* format, const std::string& text) {
    ++root_.loadErrors;
    EDITTRACE(&root_, format, text.c_str());
}

int PanelLoading::LoadFile(const std::string& path) {
    LineFile file(path, LineSource::WHOLE_LINES);
    if (!file.IsOpen()) {
        root_.loadErrors = 0;
        return -1;
    }
    if (root_.progress.tell != nullptr) {
        LineFile same(path);
        CountHeaders(same);
    }
    const PanelRoot::Held heldRoot(root_);
    logic::OpeningValues asked;
    const int created = LoadLines(file, &asked);
    if (!isCancelled_ && a_IsAlive(&root_) && root_.sendsOnOpen && !root_.neverSendsOnOpen) {
        root_.opening.SendLater(std::move(asked));
        root_.opening.Send(root_);
    }
    return file.HasFailed() ? -1 : created;
}

void PanelLoading::PassOn() {
    for (HOSTINFO* control : std::list<HOSTINFO*>(root_.Controls())) {
        if (a_IsAlive(control)) {
            control->OnUpdate(0, 0);
        }
    }
}

int PanelLoading::LoadText(std::string_view text, const char* nameInTraces) {
    if (root_.progress.tell != nullptr) {
        LineText same(text, nameInTraces);
        CountHeaders(same);
    }
    LineText lines(text, nameInTraces);
    return LoadLines(lines, nullptr);
}

void PanelLoading::CountHeaders(LineSource& source) {
    std::string line;
    bool usable = false;
    while (source.Next(line, usable)) {
        total_ += usable && logic::SplitPropertyLine(line).keyword == "control" ? 1 : 0;
    }
}

bool PanelLoading::GoesOn() {
    if (!a_IsAlive(&root_)) {
        return false;
    }
    const PanelRoot::Progress progress = root_.progress;
    const DWORD now = GetTickCount();
    if (progress.tell == nullptr || now - lastTold_ < PROGRESS_PERIOD) {
        return true;
    }
    lastTold_ = now;
    isCancelled_ = progress.tell(headers_, total_, progress.context) == 0 && mayCancel_;
    return !isCancelled_ && a_IsAlive(&root_);
}

int PanelLoading::LoadLines(LineSource& source, logic::OpeningValues* asked) {
    if (root_.opening.IsUnderWay()) {
        return -1; // by whoever watches
    }
    const PanelRoot::Held heldRoot(root_); // a line may end it
    PassOn();                              // what was set before goes its way
    root_.loadErrors = 0;
    const OpeningScope opening(root_.opening, asked);
    const DrawingHeld held(root_.window);
    const KeptLines::Reading reading(root_.kept);
    mayCancel_ = root_.progress.tell != nullptr && root_.Controls().empty() && root_.kept.IsEmpty();
    const std::vector<std::string> before = mayCancel_ ? root_.SavedValues() : std::vector<std::string>();
    std::deque<Connection> connections; // whose parts point into them
    std::string line;
    bool usable = false;
    while (GoesOn() && source.Next(line, usable)) {
        number_ = source.LineNumber();
        if (source.WasCut()) {
            TRACE("Line is longer than any line of a panel file\n");
            return -1;
        }
        if (line.empty()) {
            continue;
        }
        const logic::PropertyLine parts = logic::SplitPropertyLine(line);
        if (!usable) {
            RefuseWhole(line, parts);
        } else if (parts.keyword == "connection") {
            Defer(connections, line, parts);
        } else {
            Apply(line, parts);
        }
    }
    for (const Connection& connection : connections) {
        if (!GoesOn()) {
            break; // kept lines may have gone with the root
        }
        source.Location().SetLine(connection.number);
        ApplyDeferred(connection);
    }
    if (isCancelled_) {
        TRACE("The loading was cancelled\n");
        root_.MakeEmpty(before);
        return -1;
    }
    PassOn(); // and what the lines have set goes as they do
    return a_IsAlive(&root_) ? created_ : -1;
}

// Objects

void PanelLoading::ForgetLast() {
    lastName_.clear();
    lastObject_ = nullptr;
}

bool PanelLoading::IsRefused(std::string name) const {
    name = logic::FoldName(name);
    while (!refused_.empty() && !name.empty()) {
        if (refused_.contains(name)) {
            return true;
        }
        const auto star = name.rfind('*');
        name.resize(star == std::string::npos ? 0 : star);
    }
    return false;
}

HOSTINFO* PanelLoading::ObjectOf(const logic::PropertyLine& parts) {
    if (parts.object.empty()) {
        return parts.hasEquals ? &root_ : nullptr;
    }
    if (lastObject_ == nullptr || lastName_ != parts.object || !a_IsAlive(lastObject_)) {
        lastName_ = parts.object;
        lastObject_ = IsRefused(lastName_) ? nullptr : root_.Find(lastName_);
        if (lastObject_ != nullptr && lastObject_->kind == KIND_DEVICE) {
            lastObject_ = nullptr;
        }
    }
    return lastObject_;
}

// The innermost object there is that the line was to be in.
HOSTINFO& PanelLoading::OwnerOf(const logic::PropertyLine& parts) {
    std::string name(parts.object);
    while (!name.empty()) {
        HOSTINFO* found = IsRefused(name) ? nullptr : root_.Find(name);
        if (found != nullptr && found->kind != KIND_DEVICE) {
            return *found;
        }
        const auto star = name.rfind('*');
        name.resize(star == std::string::npos ? 0 : star);
    }
    return root_;
}

// Lines that cannot be applied

bool PanelLoading::Keeps(const HOSTINFO& owner) const {
    return &owner != &root_ || ofNoObject_ == OfNoObject::Kept;
}

KeptLines::Place PanelLoading::Reserve(const std::string& line, const logic::PropertyLine& parts,
                                       int reason) {
    HOSTINFO& owner = OwnerOf(parts);
    const std::size_t path = owner.kind == KIND_ROOT ? 0 : owner.name.size() + 1;
    return root_.kept.Reserve(owner, std::string_view(line).substr(path), number_, reason);
}

void PanelLoading::KeepStray(const std::string& line, const logic::PropertyLine& parts, int reason) {
    if (Keeps(OwnerOf(parts))) {
        root_.kept.Confirm(Reserve(line, parts, reason));
    }
}

void PanelLoading::RefuseWhole(const std::string& line, const logic::PropertyLine& parts) {
    Fail("Line is too long or damaged: %s", line.substr(0, logic::LineReader::excerptLength));
    HOSTINFO* object = parts.keyword == "control" ? nullptr : ObjectOf(parts);
    if (object == nullptr) {
        KeepStray(line, parts, PH_UNREAD_DAMAGED);
        return;
    }
    root_.kept.Refused(*object, WithoutObject(line, parts), number_, PH_UNREAD_DAMAGED);
    root_.kept.Passed(*object, parts.keyword);
}

// Lines

void PanelLoading::Apply(const std::string& line, const logic::PropertyLine& parts) {
    if (parts.keyword == "control") {
        ++headers_;
        HOSTINFO* control = nullptr;
        if (const int reason = CreateFromHeader(line, parts, control); reason != 0) {
            KeepStray(line, parts, reason);
            refused_.insert(logic::FoldName(PathOf(parts) + NameInHeader(parts.value)));
        } else {
            refused_.erase(logic::FoldName(control->name));
            root_.kept.Passed(*control, "control");
        }
        ForgetLast();
    } else if (HOSTINFO* object = ObjectOf(parts); object != nullptr) {
        if (Send(*object, line, parts)) {
            root_.kept.Passed(*object, parts.keyword);
        }
    } else {
        Fail("Object not found: %s", line);
        KeepStray(line, parts, PH_UNREAD_OBJECT);
    }
}

void PanelLoading::Defer(std::deque<Connection>& connections, const std::string& line,
                         const logic::PropertyLine& parts) {
    Connection& connection = connections.emplace_back();
    connection.line = line;
    connection.parts = PartsOf(connection.line, line, parts);
    connection.number = number_;
    connection.object = ObjectOf(parts);
    if (connection.object != nullptr) {
        root_.kept.Passed(*connection.object, parts.keyword);
        return;
    }
    connection.isRefused = IsRefused(std::string(parts.object));
    connection.place = Reserve(line, parts, PH_UNREAD_OBJECT);
}

void PanelLoading::ApplyDeferred(const Connection& connection) {
    number_ = connection.number;
    const logic::PropertyLine& parts = connection.parts;
    if (connection.object != nullptr) {
        if (a_IsAlive(connection.object)) {
            Send(*connection.object, connection.line, parts);
        }
        return;
    }
    HOSTINFO* object = connection.isRefused ? nullptr : ObjectOf(parts);
    if (object == nullptr && Keeps(*connection.place->owner)) {
        root_.kept.Confirm(connection.place);
    } else {
        root_.kept.Drop(connection.place);
    }
    if (object == nullptr) {
        Fail("Object not found: %s", connection.line);
    } else {
        Send(*object, connection.line, parts);
    }
}

int PanelLoading::CreateFromHeader(const std::string& line, const logic::PropertyLine& parts,
                                   HOSTINFO*& control) {
    const auto header = logic::ParseControlHeader(parts.value);
    if (!header) {
        Fail("Error reading line %s", line);
        return PH_UNREAD_DAMAGED;
    }
    const bool isInside = !parts.object.empty();
    HOSTINFO* parent = !isInside                              ? &root_
                       : IsRefused(std::string(parts.object)) ? nullptr
                                                              : root_.Find(std::string(parts.object));
    if (parent == nullptr || parent->kind == KIND_DEVICE) {
        Fail("Panel not found: %s", line);
        return PH_UNREAD_OBJECT;
    }
    control = root_.Find(PathOf(parts) + header->name);
    if (control == nullptr) {
        const int reason = Create(*header, *parent, control);
        if (reason != 0) {
            Fail("Unknown class: %s", line);
        }
        return reason;
    }
    char className[65];
    GetClassNameA(control->window, className, sizeof className);
    if (header->className != className) {
        Fail("Name is taken by a control of another class: %s", line);
        return PH_UNREAD_NAME;
    }
    if (control->kind == KIND_CONTROL &&
        parent->kind == KIND_CONTROL) { // a strip's own child, moved by its user
        const logic::Rectangle& place = header->rectangle;
        SetWindowPos(control->window, nullptr, place.left, place.top, place.right - place.left,
                     place.bottom - place.top, SWP_NOZORDER | SWP_NOACTIVATE);
    }
    return 0;
}

int PanelLoading::Create(const logic::ControlHeader& header, HOSTINFO& parent, HOSTINFO*& control) {
    if (!IsControlClass(header.className)) {
        return PH_UNREAD_CLASS;
    }
    const logic::Rectangle& place = header.rectangle;
    const DWORD style = (header.style & ~static_cast<DWORD>(WS_POPUP)) | WS_CHILD;
    HWND window = CreateWindowExA(header.extendedStyle, header.className.c_str(), header.name.c_str(), style,
                                  place.left, place.top, place.right - place.left, place.bottom - place.top,
                                  parent.window, nullptr, nullptr, &parent);
    control = a_FromWindow(window);
    if (control == nullptr || PanelRoot::Above(control) != &root_) { // it would not be saved
        if (window != nullptr) {
            DestroyWindow(window);
        }
        return PH_UNREAD_CLASS;
    }
    root_.ApplyLayers(control); // the header may ask for a visible one
    ++created_;
    return 0;
}

bool PanelLoading::Send(HOSTINFO& object, const std::string& line, const logic::PropertyLine& parts) {
    const std::string_view text = WithoutObject(line, parts);
    const auto lParam = reinterpret_cast<LPARAM>(text.data()); // ends with the line
    const bool isRoot = &object == &root_;
    const bool isLayer = !isRoot && parts.keyword == "layer" && parts.hasEquals;
    const bool isGroup = !isRoot && parts.keyword == logic::GROUP_KEYWORD && parts.hasEquals;
    const LRESULT taken = isRoot    ? root_.OnLoad(LOAD_FROM_FILE, lParam)
                          : isLayer ? a_SetLayers(&object, std::string(parts.value).c_str()) // of any class
                          : isGroup ? a_SetGroup(&object, std::string(parts.value).c_str())
                                    : SendMessageA(object.window, CWM_LOAD, LOAD_FROM_FILE, lParam);
    if (!a_IsAlive(&object)) { // a value that was passed on can have closed it
        return false;
    }
    const KEYWORDROW* table = object.HasHostinfoTable() != 0 ? object.GetHostinfoTable() : nullptr;
    const int reason = taken != 0 ? 0 : isGroup ? PH_UNREAD_VALUE : ReasonOfRefusal(table, parts);
    if (taken != 0 || logic::IsEmptyBinding(parts.keyword, parts.value) ||
        (reason == PH_UNREAD_VALUE && Holds(object, table, parts))) {
        root_.kept.Took(object, parts.keyword);
    } else if (root_.kept.Refused(object, text, number_, reason)) {
        ++root_.loadErrors;
    }
    return true;
}
