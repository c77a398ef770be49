// What a program sent in a packet: the bytes after the headers of the network.
#pragma once

#include <string>
#include <string_view>

#include "input/Capture.h"

namespace tool {

/// Returns the payload of a UDP or TCP packet over IPv4 or IPv6; it points into the packet. Knows the link
/// types Ethernet (with VLAN tags), raw IP, loopback and Linux "cooked". Throws a Failure that names `what`,
/// the packet, if it carries something else, if it is a fragment, or if its lengths contradict one another.
std::string_view PayloadOf(const Packet& packet, const std::string& what);

}  // namespace tool
