#include "Panelhost/files/PanelLoading.h"

#include "Panelhost/DrawingHeld.h"
#include "Panelhost/Trace.h"

void PanelLoading::Fail(const char* format, const std::string& text) {
    ++root_.loadErrors;
    EDITTRACE(&root_, format, text.c_str());
}

int PanelLoading::LoadFile(const std::string& path) {
    LineFile file(path);
    if (!file.IsOpen()) {
        root_.loadErrors = 0;
        return -1;
    }
    logic::OpeningValues asked;
    const int created = LoadLines(file, &asked);
    if (root_.sendsOnOpen) {
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

int PanelLoading::LoadLines(LineSource& source, logic::OpeningValues* asked) {
    PassOn(); // what was set before goes its way
    root_.loadErrors = 0;
    const OpeningScope opening(root_.opening, asked);
    const DrawingHeld held(root_.window);
    std::vector<Connection> connections;
    std::string line;
    bool usable = false;
    while (source.Next(line, usable)) {
        if (!usable) {
            Fail("Line is too long or damaged: %s", line);
        } else if (logic::SplitPropertyLine(line).keyword == "connection") {
            connections.push_back({line, source.LineNumber()});
        } else if (!line.empty()) {
            Apply(line);
        }
    }
    for (const Connection& connection : connections) {
        source.Location().SetLine(connection.lineNumber);
        Apply(connection.line);
    }
    PassOn(); // and what the lines have set goes as they do
    return created_;
}

void PanelLoading::Apply(const std::string& line) {
    const logic::PropertyLine parts = logic::SplitPropertyLine(line);
    if (parts.keyword == "control") {
        CreateFromHeader(line, parts);
    } else {
        Send(line, parts);
    }
}

void PanelLoading::CreateFromHeader(const std::string& line, const logic::PropertyLine& parts) {
    const auto header = logic::ParseControlHeader(parts.value);
    HOSTINFO* parent = parts.object.empty() ? &root_ : root_.Find(std::string(parts.object));
    if (!header || parent == nullptr || parent->kind == KIND_DEVICE) {
        Fail(header ? "Panel not found: %s" : "Error reading line %s", line);
        return;
    }
    const logic::Rectangle& place = header->rectangle;
    const std::string path = parts.object.empty() ? "" : std::string(parts.object) + "*";
    if (const HOSTINFO* existing = root_.Find(path + header->name); existing != nullptr) {
        char className[65];
        GetClassNameA(existing->window, className, sizeof className);
        if (header->className != className) {
            Fail("Name is taken by a control of another class: %s", line);
            return;
        }
        if (existing->kind == KIND_CONTROL &&
            parent->kind == KIND_CONTROL) { // a strip's own child, moved by its user
            SetWindowPos(existing->window, nullptr, place.left, place.top, place.right - place.left,
                         place.bottom - place.top, SWP_NOZORDER | SWP_NOACTIVATE);
        }
        return;
    }
    const DWORD style = (header->style & ~static_cast<DWORD>(WS_POPUP)) | WS_CHILD;
    HWND window = CreateWindowExA(header->extendedStyle, header->className.c_str(), header->name.c_str(),
                                  style, place.left, place.top, place.right - place.left,
                                  place.bottom - place.top, parent->window, nullptr, nullptr, parent);
    const HOSTINFO* object = a_FromWindow(window);
    if (object == nullptr) { // no such class, or a class that is none of a control
        if (window != nullptr) {
            DestroyWindow(window);
        }
        Fail("Unknown class: %s", line);
        return;
    }
    root_.ApplyLayers(object); // the header may ask for a visible one
    ++created_;
    lastName_.clear();
    lastObject_ = nullptr;
}

void PanelLoading::Send(const std::string& line, const logic::PropertyLine& parts) {
    if (parts.object.empty() && parts.hasEquals) {
        if (root_.OnLoad(LOAD_FROM_FILE, reinterpret_cast<LPARAM>(line.c_str())) == 0) {
            ++root_.loadErrors;
        }
        return;
    }
    if (lastObject_ == nullptr || lastName_ != parts.object || !a_IsAlive(lastObject_)) {
        lastName_ = parts.object;
        lastObject_ = root_.Find(lastName_);
    }
    if (lastObject_ == nullptr || lastObject_->kind == KIND_DEVICE) {
        Fail("Object not found: %s", line);
        return;
    }
    if (parts.keyword == "connection" && parts.value.empty() && lastObject_->connections.empty()) {
        return; // every control is saved with this line, some refuse it, and it would change nothing
    }
    const char* text = parts.hasEquals ? parts.keyword.data() : parts.value.data();
    if (SendMessageA(lastObject_->window, CWM_LOAD, LOAD_FROM_FILE, reinterpret_cast<LPARAM>(text)) == 0) {
        ++root_.loadErrors;
    }
}
