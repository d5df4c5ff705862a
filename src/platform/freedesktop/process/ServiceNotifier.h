#pragma once

#include <string>
#include <string_view>

namespace lumatile {

/// Tells the service manager that started this process how far it is, by datagrams to the socket
/// that the environment names ("NOTIFY_SOCKET"). Silent where nobody asked to be told.
class ServiceNotifier {
public:
    /// Takes the socket's name out of the environment's present value.
    ServiceNotifier();

    /// Everything is started: the shortcuts work from now on.
    void ready() const { send("READY=1"); }

    /// The process is about to end.
    void stopping() const { send("STOPPING=1"); }

private:
    void send(std::string_view state) const;

    std::string address_;
};

}  // namespace lumatile
