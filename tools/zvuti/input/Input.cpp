#include "input/Input.h"

#include "input/Capture.h"
#include "input/HexText.h"
#include "input/Payload.h"
#include "shared/Files.h"
#include "shared/Terminal.h"

namespace tool {
namespace {

std::string PayloadsOf(const std::string& capture, const std::vector<std::size_t>& numbers,
                       const std::string& name) {
  std::string bytes;
  for (const std::size_t number : numbers) {
    const Packet packet = PacketOf(capture, number, name);
    const std::string what = name + ": packet " + std::to_string(number);
    const std::string_view payload = PayloadOf(packet, what);
    if (packet.size > packet.bytes.size()) {
      Say(what + " was cut when it was captured: " + std::to_string(packet.bytes.size()) + " of " +
          Count(packet.size, "byte") + " are there");
    }
    if (payload.empty()) throw Failure(what + " has no payload");
    bytes += payload;
  }
  return bytes;
}

}  // namespace

void AddInputOptions(CLI::App& command, Input& input) {
  CLI::Option* hex = command.add_flag(
      "--hex", input.isHex, "the input is text: 01 FF, 0x01, \\x01, xxd, hexdump -C, a C array or string");
  command
      .add_option(
          "--packet", input.packets,
          "the input is a capture, pcap or pcapng: take the UDP or TCP payload of packet N; of several, "
          "joined, with N,M")
      ->type_name("N")
      ->expected(1)
      ->take_all()
      ->delimiter(',')
      ->check(CLI::Range(std::size_t{1}, std::size_t{0xFFFFFFFF}).description(""))
      ->excludes(hex);
}

std::string ReadBytes(const Input& input) {
  std::string bytes = ReadAll(input.file);
  const std::string name = NameOf(input.file);
  if (input.isHex) return FromHex(bytes, name);
  if (!input.packets.empty()) return PayloadsOf(bytes, input.packets, name);
  if (IsCapture(bytes)) Say(name + " looks like a capture; --packet N reads the payload of its packet N");
  return bytes;
}

}  // namespace tool
