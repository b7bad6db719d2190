#pragma once

// A server on this machine that listens and that must not be called.

#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <string>
#include <system_error>

/// Listens on a port of its own for as long as it lives. The system takes calls in its stead, so a
/// call that has been made is seen, however short it was.
class UncalledServer {
public:
    UncalledServer() : socket_{::socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0)} {
        require(socket_ >= 0);
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof address;
        auto* const plain = reinterpret_cast<sockaddr*>(&address);
        require(::bind(socket_, plain, size) == 0);
        require(::listen(socket_, 16) == 0);
        require(::getsockname(socket_, plain, &size) == 0);
        port_ = ntohs(address.sin_port);
    }

    UncalledServer(UncalledServer const&) = delete;
    UncalledServer& operator=(UncalledServer const&) = delete;

    ~UncalledServer() { ::close(socket_); }

    std::uint16_t port() const noexcept { return port_; }

    /// "127.0.0.1:" and the port, as addresses have it.
    std::string host() const { return "127.0.0.1:" + std::to_string(port_); }

    /// Whether it was called since the last question.
    bool wasCalled() const {
        int const call = ::accept(socket_, nullptr, nullptr);
        if (call < 0) require(errno == EAGAIN || errno == EWOULDBLOCK);
        if (call >= 0) ::close(call);
        return call >= 0;
    }

private:
    static void require(bool condition) {
        if (!condition) throw std::system_error{errno, std::generic_category(), "the server"};
    }

    int socket_;
    std::uint16_t port_ = 0;
};
