#include "tests/windows/Partners.h"

#include <cstdlib>

namespace {

int PortIn(const char* variable, std::size_t place) {
    const char* text = std::getenv(variable);
    std::string ports = text == nullptr ? "" : text;
    for (; place > 0 && !ports.empty(); --place) {
        ports.erase(0, ports.find(',') + 1);
    }
    return std::atoi(ports.c_str());
}

sockaddr_in Local(int port) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<u_short>(port));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    return address;
}

} // namespace

int MixerPort() {
    return PortIn("OSMIR_MIXER", 0);
}
int MixerControlPort() {
    return PortIn("OSMIR_MIXER", 1);
}
int PartnersPort() {
    return PortIn("OSMIR_PARTNERS", 0);
}

Partner::Partner(int port) : port_(port) {
    WSADATA data{};
    WSAStartup(MAKEWORD(2, 2), &data); // until the process ends
    socket_ = Socket(socket(AF_INET, SOCK_DGRAM, IPPROTO_UDP));
    const DWORD patience = 30'000;
    setsockopt(socket_.Get(), SOL_SOCKET, SO_RCVTIMEO, reinterpret_cast<const char*>(&patience),
               sizeof patience);
}

std::string Partner::Ask(const std::string& text) const {
    const sockaddr_in address = Local(port_);
    sendto(socket_.Get(), text.data(), static_cast<int>(text.size()), 0,
           reinterpret_cast<const sockaddr*>(&address), sizeof address);
    char answer[65536];
    const int size = recv(socket_.Get(), answer, sizeof answer, 0);
    return size < 0 ? "" : std::string(answer, answer + size);
}
