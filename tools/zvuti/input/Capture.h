// Captures of network traffic: files of tcpdump, Wireshark and others.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace tool {

/// One packet of a capture.
struct Packet {
  std::string_view bytes;    ///< as captured
  std::size_t size = 0;      ///< as it was on the network; more than `bytes` has if it was cut
  std::uint32_t link = 0;    ///< the link type
  bool isBigEndian = false;  ///< the byte order of the file
};

/// Returns true if bytes start as a capture does: classic pcap in both byte orders, with micro- or
/// nanoseconds, or pcapng.
bool IsCapture(std::string_view bytes);

/// Returns packet `number`, counted from 1 as tcpdump and Wireshark count. The result points into `capture`.
/// Throws a Failure that names `what`, the source of the bytes, if it is not a capture, is damaged before
/// that packet, or has no such packet.
Packet PacketOf(std::string_view capture, std::size_t number, const std::string& what);

}  // namespace tool
