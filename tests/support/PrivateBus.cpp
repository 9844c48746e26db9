#include "support/PrivateBus.h"

#include "support/ReadyPipe.h"

#include <stdexcept>

namespace fernhop::support {

namespace {

std::string configuration(const TemporaryHome &home, const std::string &limits) {
    return "<!DOCTYPE busconfig PUBLIC \"-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN\"\n"
           " \"http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd\">\n"
           "<busconfig><type>session</type>"
           "<listen>unix:path=" +
           home.runtime() + "/bus</listen><auth>EXTERNAL</auth><servicedir>" + home.data() +
           "/dbus-1/services</servicedir><policy context=\"default\">"
           "<allow send_destination=\"*\" eavesdrop=\"true\"/><allow eavesdrop=\"true\"/>"
           "<allow own=\"*\"/><allow user=\"*\"/></policy>"
           "<limit name=\"max_message_size\">1000000000</limit>"
           // As on the bus of a real session; the daemon's own limits are far below.
           "<limit name=\"max_incoming_bytes\">1000000000</limit>"
           "<limit name=\"max_outgoing_bytes\">1000000000</limit>"
           "<limit name=\"max_pending_service_starts\">10000</limit>"
           "<limit name=\"max_replies_per_connection\">50000</limit>" +
           limits + "</busconfig>\n";
}

} // namespace

PrivateBus::PrivateBus(const TemporaryHome &home, const Environment &more, const std::string &limits) {
    const std::string file = home.root() + "/bus.conf";
    home.write(file, configuration(home, limits));
    home.write(home.data() + "/dbus-1/services/README",
               "The private bus starts the services of this folder.\n");
    ReadyPipe ready;
    Command command{{"dbus-daemon", "--config-file=" + file, "--nofork", "--nopidfile",
                     "--print-address=" + std::to_string(ready.writer())},
                    home.environment() + more};
    command.environment.insert_or_assign("DBUS_SESSION_BUS_ADDRESS", "unix:path=" + home.runtime() + "/bus");
    command.keptDescriptors = {ready.writer()};
    daemon = std::make_unique<ChildProcess>(command);
    busAddress = ready.readLine();
    if (busAddress.empty())
        throw std::runtime_error("dbus-daemon did not start");
}

} // namespace fernhop::support
