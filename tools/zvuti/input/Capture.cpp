// The formats: the pcap savefile format and "PCAP Next Generation", both described by the IETF's opsawg group
// (draft-ietf-opsawg-pcap, draft-ietf-opsawg-pcapng).
#include "input/Capture.h"

#include <vector>

#include "input/ByteReader.h"
#include "shared/Terminal.h"

namespace tool {
namespace {

constexpr std::size_t kFileHeader = 24;
constexpr std::uint32_t kMicroseconds = 0xA1B2C3D4, kNanoseconds = 0xA1B23C4D;
constexpr std::uint32_t kSection = 0x0A0D0D0A, kByteOrder = 0x1A2B3C4D;
constexpr std::uint32_t kInterface = 1, kOldPacket = 2, kSimplePacket = 3, kPacket = 6;
constexpr std::size_t kLeastBlock = 12;  // type, length, length

// Where a reader is and what it knows; counts the packets.
class Walk {
 public:
  Walk(std::string_view capture, std::size_t number, const std::string& what)
      : reader_(capture, false), wanted_(number), what_(what) {}

  Packet Find() {
    Packet packet;
    const std::uint32_t magic = reader_.U32(0);
    bool isFound = false;
    if (magic == kSection) {
      isFound = FindInBlocks(packet);
    } else {
      reader_.SetBigEndian(IsSwapped(magic));
      isFound = FindInRecords(packet);
    }
    if (isFound) return packet;
    throw Failure(what_ + ": there is no packet " + std::to_string(wanted_) + "; the capture has " +
                  Count(count_, "packet"));
  }

  static bool IsClassic(std::uint32_t magic) { return magic == kMicroseconds || magic == kNanoseconds; }
  // `magic` is read as little-endian; false if it is no magic in that order.
  static bool IsSwapped(std::uint32_t magic) { return !IsClassic(magic); }

 private:
  bool FindInRecords(Packet& packet) {
    Need(kFileHeader, "file header");
    packet.link = reader_.U32(20) & 0xFFFF;  // the rest says how long the checksum of a frame is
    packet.isBigEndian = reader_.IsBigEndian();
    for (at_ = kFileHeader; at_ < reader_.Size();) {
      Need(16, "header of packet " + std::to_string(count_ + 1));
      const std::size_t captured = reader_.U32(at_ + 8);
      packet.size = reader_.U32(at_ + 12);
      at_ += 16;
      if (TakePacket(at_, captured, packet)) return true;
      at_ += captured;
    }
    return false;
  }

  bool FindInBlocks(Packet& packet) {
    std::vector<std::pair<std::uint32_t, std::uint32_t>> interfaces;  // link type, most bytes of a packet
    for (std::size_t length = 0; at_ < reader_.Size(); at_ += length) {
      const std::string block = "block at offset " + std::to_string(at_);
      Need(kLeastBlock, block);
      if (reader_.U32(at_) == kSection) {  // the same in both byte orders
        reader_.SetBigEndian(false);
        reader_.SetBigEndian(reader_.U32(at_ + 8) != kByteOrder);
        if (reader_.U32(at_ + 8) != kByteOrder)
          throw Failure(what_ + ": the " + block + " has no byte order");
        interfaces.clear();
      }
      const std::uint32_t type = reader_.U32(at_);
      length = reader_.U32(at_ + 4);
      if (length < kLeastBlock || length % 4 != 0)
        throw Failure(what_ + ": the " + block + " has an impossible length, " + std::to_string(length));
      Need(length, block);
      const std::size_t body = at_ + 8, size = length - kLeastBlock;
      packet.isBigEndian = reader_.IsBigEndian();
      if (type == kInterface && size >= 8) {
        interfaces.emplace_back(reader_.U16(body), reader_.U32(body + 4));
        continue;
      }
      const bool isOld = type == kOldPacket;
      const std::size_t header = type == kSimplePacket ? 4 : 20;
      if ((type != kPacket && type != kSimplePacket && !isOld) || size < header) continue;
      const std::size_t index = type == kSimplePacket ? 0 : isOld ? reader_.U16(body) : reader_.U32(body);
      if (index >= interfaces.size()) throw Failure(what_ + ": the " + block + " names no interface");
      packet.link = interfaces[index].first;
      packet.size = reader_.U32(body + header - 4);
      std::size_t captured = reader_.U32(body + 12);
      if (type == kSimplePacket) {
        const std::size_t most = interfaces[0].second == 0 ? packet.size : interfaces[0].second;
        captured = packet.size < most ? packet.size : most;
      }
      if (captured > size - header) {
        throw Failure(what_ + ": the " + block + " is too short for its packet of " +
                      Count(captured, "byte"));
      }
      if (TakePacket(body + header, captured, packet)) return true;
    }
    return false;
  }

  // Counts a packet. Returns true if it is the wanted one.
  bool TakePacket(std::size_t at, std::size_t captured, Packet& packet) {
    ++count_;
    if (captured > reader_.Size() - at) {
      throw Failure(what_ + ": the file ends in packet " + std::to_string(count_) + ": " +
                    Count(captured, "byte") + " needed, " + std::to_string(reader_.Size() - at) + " left");
    }
    packet.bytes = reader_.Bytes(at, captured);
    return count_ == wanted_;
  }

  void Need(std::size_t size, const std::string& place) const {
    if (size <= reader_.Size() - at_) return;
    throw Failure(what_ + ": the file ends in the " + place + ": " + Count(size, "byte") + " needed, " +
                  std::to_string(reader_.Size() - at_) + " left");
  }

  ByteReader reader_;
  std::size_t at_ = 0, count_ = 0;
  std::size_t wanted_;
  const std::string& what_;
};

}  // namespace

bool IsCapture(std::string_view bytes) {
  if (bytes.size() < kLeastBlock) return false;
  ByteReader reader(bytes, false);
  if (reader.U32(0) == kSection) return true;
  const bool isLittle = Walk::IsClassic(reader.U32(0));
  reader.SetBigEndian(!isLittle);
  return Walk::IsClassic(reader.U32(0)) && reader.U16(4) == 2;  // version 2.4
}

Packet PacketOf(std::string_view capture, std::size_t number, const std::string& what) {
  if (!IsCapture(capture)) throw Failure(what + " is not a capture: neither pcap nor pcapng");
  return Walk(capture, number, what).Find();
}

}  // namespace tool
