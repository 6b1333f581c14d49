#pragma once

#include <winsock2.h> // refuses to stand behind windows.h

#include "Panelhost/devices/LinkConnection.h"
#include "base/Sockets.h"

// A link's datagrams, to one address and port and from there only.
class UdpConnection : public LinkConnection {
public:
    UdpConnection(HWND window, const sockaddr_in& device);

    HANDLE Event() const override { return event_.Get(); }
    void End(logic::Milliseconds now) override;

protected:
    std::unique_ptr<logic::DeviceLink> Open(logic::Milliseconds now) override;
    bool Receive(logic::DeviceLink& link, logic::Milliseconds now) override;
    void Send(std::string_view bytes) override;

    virtual std::unique_ptr<logic::DeviceLink> MakeLink(logic::Milliseconds now) = 0;

private:
    const sockaddr_in device_;
    SocketEvent event_{SocketEvent::ResetsItself};
    Socket socket_;
};
