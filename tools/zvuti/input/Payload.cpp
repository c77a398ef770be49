// The numbers of link types are those of tcpdump's list; those of protocols and header layouts are IANA's and
// of RFC 791 (IPv4), RFC 8200 (IPv6), RFC 768 (UDP), RFC 9293 (TCP).
#include "input/Payload.h"

#include <algorithm>

#include "input/ByteReader.h"
#include "shared/Terminal.h"

namespace tool {
namespace {

constexpr unsigned kIpv4 = 0x0800, kIpv6 = 0x86DD;  // as types of Ethernet
constexpr unsigned kTcp = 6, kUdp = 17;
constexpr std::size_t kIpv6Header = 40, kUdpHeader = 8, kTcpHeader = 20;

// Takes headers off the front of a packet, one after the other.
class Headers {
 public:
  Headers(const Packet& packet, const std::string& what)
      : rest_(packet.bytes, true), isBigEndian_(packet.isBigEndian), what_(what) {}

  std::string_view PayloadOn(std::uint32_t link) {
    const unsigned type = TakeLink(link);
    if (type != kIpv4 && type != kIpv6)
      Refuse("does not carry IP (its type is " + std::to_string(type) + ")");
    const unsigned protocol = type == kIpv4 ? TakeIpv4() : TakeIpv6();
    if (protocol == kUdp) return Udp();
    if (protocol == kTcp) return Tcp();
    Refuse("carries neither UDP nor TCP (its IP protocol is " + std::to_string(protocol) + ")");
  }

 private:
  // Takes the header of the link. Returns the type of what follows.
  unsigned TakeLink(std::uint32_t link) {
    switch (link) {
      case 0:    // loopback of BSD: an address family in the byte order of the machine
      case 108:  // the same in network byte order
        return TakeFamily(link == 108 || isBigEndian_);
      case 1:
        return TakeEthernet();
      case 12:
      case 14:
      case 101:
        Need(1, "IP header");
        return rest_.U8(0) >> 4 == 6 ? kIpv6 : kIpv4;
      case 113: {
        Need(16, "header of the link");
        const unsigned type = rest_.U16(14);
        Drop(16);
        return type;
      }
      case 276: {
        Need(20, "header of the link");
        const unsigned type = rest_.U16(0);
        Drop(20);
        return type;
      }
      case 228:
        return kIpv4;
      case 229:
        return kIpv6;
      default:
        Refuse("has the link type " + std::to_string(link) +
               "; known are Ethernet, raw IP, loopback and Linux cooked");
    }
  }

  unsigned TakeFamily(bool isBigEndian) {
    Need(4, "header of the link");
    rest_.SetBigEndian(isBigEndian);
    const std::uint32_t family = rest_.U32(0);
    rest_.SetBigEndian(true);
    Drop(4);
    if (family == 2) return kIpv4;
    // IPv6 has a number of its own on each system.
    const bool isIpv6 = family == 10 || family == 23 || family == 24 || family == 28 || family == 30;
    return isIpv6 ? kIpv6 : family;
  }

  unsigned TakeEthernet() {
    Need(14, "Ethernet header");
    unsigned type = rest_.U16(12);
    Drop(14);
    while (type == 0x8100 || type == 0x88A8 || type == 0x9100) {
      Need(4, "VLAN tag");
      type = rest_.U16(2);
      Drop(4);
    }
    return type;
  }

  unsigned TakeIpv4() {
    Need(20, "IP header");
    const std::size_t header = std::size_t{4} * (rest_.U8(0) & 15u);
    const std::size_t total = rest_.U16(2);
    if (rest_.U8(0) >> 4 != 4 || header < 20) Refuse("has no valid IPv4 header");
    if ((rest_.U16(6) & 0x3FFF) != 0) RefuseFragment();
    const unsigned protocol = rest_.U8(9);
    Need(header, "IP header");
    // A length of 0 is that of a packet which the network card was to split.
    if (total != 0) KeepOnly(total, header);
    Drop(header);
    return protocol;
  }

  unsigned TakeIpv6() {
    Need(kIpv6Header, "IP header");
    if (rest_.U8(0) >> 4 != 6) Refuse("has no valid IPv6 header");
    unsigned next = rest_.U8(6);
    const std::size_t size = rest_.U16(4);
    Drop(kIpv6Header);
    if (size != 0) KeepOnly(size, 0);
    // Options for hops, the destination and the route are skipped.
    while (next == 0 || next == 43 || next == 60 || next == 44) {
      Need(8, "IPv6 extension");
      if (next == 44 && (rest_.U16(2) & 0xFFF9) != 0) RefuseFragment();
      const std::size_t length = next == 44 ? 8 : (rest_.U8(1) + 1u) * 8;
      next = rest_.U8(0);
      Need(length, "IPv6 extension");
      Drop(length);
    }
    return next;
  }

  std::string_view Udp() {
    Need(kUdpHeader, "UDP header");
    const std::size_t size = rest_.U16(4);
    if (size != 0) KeepOnly(size, kUdpHeader);
    Drop(kUdpHeader);
    return Rest();
  }

  std::string_view Tcp() {
    Need(kTcpHeader, "TCP header");
    const std::size_t header = std::size_t{4} * (rest_.U8(12) >> 4);
    if (header < kTcpHeader) Refuse("has no valid TCP header");
    Need(header, "TCP header");
    Drop(header);
    return Rest();
  }

  std::string_view Rest() const { return rest_.Bytes(0, rest_.Size()); }
  void Drop(std::size_t size) { rest_ = ByteReader(rest_.Bytes(size, rest_.Size() - size), true); }
  // Cuts what follows a packet, such as the padding of Ethernet.
  void KeepOnly(std::size_t size, std::size_t least) {
    if (size < least) Refuse("has a header that says it has only " + Count(size, "byte"));
    rest_ = ByteReader(rest_.Bytes(0, std::min(size, rest_.Size())), true);
  }
  void Need(std::size_t size, const char* place) const {
    if (size > rest_.Size()) {
      Refuse(std::string("ends in the ") + place + ": " + Count(size, "byte") + " needed, " +
             std::to_string(rest_.Size()) + " left");
    }
  }
  [[noreturn]] void RefuseFragment() const {
    Refuse("is a fragment of an IP packet; only whole packets are read");
  }
  [[noreturn]] void Refuse(const std::string& problem) const { throw Failure(what_ + " " + problem); }

  ByteReader rest_;
  bool isBigEndian_;
  const std::string& what_;
};

}  // namespace

std::string_view PayloadOf(const Packet& packet, const std::string& what) {
  return Headers(packet, what).PayloadOn(packet.link);
}

}  // namespace tool
