#pragma once

#include "Panelhost/devices/NetworkThread.h"

#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

// Between a device of a panel and the link that talks to the real one on the network thread: what is asked
// goes one way, what is found out the other. Neither side waits. How bytes travel is left to those that
// derive from it.
class LinkConnection : public NetworkConnection, public logic::LinkOwner {
public:
    // What was found out since it was last taken: of each parameter the newest.
    struct News {
        std::map<std::size_t, logic::ParameterUpdate> parameters;
        std::optional<logic::DeviceUpdate> device;
    };

    // The window is posted DEVICE_NEWS when there are news.
    explicit LinkConnection(HWND window) : window_(window) {}

    // For the panel's thread. The network thread is to be woken afterwards when true is answered.
    bool Want(std::vector<std::size_t> parameters);
    bool Ask(std::size_t parameter);
    bool Set(logic::LinkSetting setting);
    bool Switch(bool isOn);
    News TakeNews();
    bool HasNews() const { return hasNews_; }
    // Nothing is posted any more.
    void Leave();

    logic::Milliseconds Work(logic::Milliseconds now) override;
    void End(logic::Milliseconds now) override;
    void Fail() noexcept override;

protected:
    // On the network thread: makes the link, and what it sends by.
    virtual std::unique_ptr<logic::DeviceLink> Open(logic::Milliseconds now) = 0;
    // Hands to the link what has come. False when there may be more.
    virtual bool Receive(logic::DeviceLink& link, logic::Milliseconds now) = 0;

    void Tell(std::size_t parameter, const logic::ParameterUpdate& update) override;
    void Tell(const logic::DeviceUpdate& update) override;
    void Trace(const std::string& text) override;

private:
    struct Asked {
        std::optional<std::vector<std::size_t>> wanted;
        std::optional<bool> isOn;
        std::vector<std::size_t> parameters;
        std::vector<logic::LinkSetting> settings;

        bool IsEmpty() const { return !wanted && !isOn && parameters.empty() && settings.empty(); }
    };

    template <class Change>
    bool Put(Change change);
    void CarryOut(logic::Milliseconds now);
    void Post();

    std::unique_ptr<logic::DeviceLink> link_; // the network thread's
    logic::DeviceUpdate device_;

    std::mutex lock_; // guards what follows
    HWND window_;
    Asked asked_;
    News news_;
    std::atomic<bool> hasNews_ = false;
    std::atomic<bool> isPosted_ = false;
};
