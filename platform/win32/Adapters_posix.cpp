#include "platform/win32/Adapters.h"

#include <ifaddrs.h>
#include <linux/ethtool.h>
#include <linux/sockios.h>
#include <net/if.h>
#include <netpacket/packet.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <memory>
#include <new>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace {

struct Interface {
  int index;
  bool loopback;
  std::string name;
  std::string address;
};

// All interfaces by index, the loopback last; none when the host system does not list them, or when there is
// the loopback alone.
std::vector<Interface> Interfaces() {
  std::vector<Interface> found;
  ifaddrs* first = nullptr;
  if (getifaddrs(&first) != 0) return found;
  const std::unique_ptr<ifaddrs, decltype(&freeifaddrs)> owner(first, freeifaddrs);
  for (const ifaddrs* entry = first; entry; entry = entry->ifa_next) {
    if (!entry->ifa_addr || entry->ifa_addr->sa_family != AF_PACKET) continue;
    const auto* link = reinterpret_cast<const sockaddr_ll*>(entry->ifa_addr);
    const std::size_t length = std::min<std::size_t>(link->sll_halen, sizeof link->sll_addr);
    found.push_back({link->sll_ifindex, (entry->ifa_flags & IFF_LOOPBACK) != 0, entry->ifa_name,
                     std::string(reinterpret_cast<const char*>(link->sll_addr), length)});
  }
  std::sort(found.begin(), found.end(), [](const auto& a, const auto& b) {
    return std::pair(a.loopback, a.index) < std::pair(b.loopback, b.index);
  });
  if (std::all_of(found.begin(), found.end(), [](const auto& i) { return i.loopback; })) found.clear();
  return found;
}

// The common part of both lists: chooses the interfaces, measures the block, has each record filled
// and links the records.
template <class Record, class Choose, class Fill>
ULONG FillList(Record* list, ULONG* size, Choose choose, Fill fill) try {
  std::vector<Interface> interfaces = Interfaces();
  std::erase_if(interfaces, [&](const Interface& interface) { return !choose(interface); });
  if (interfaces.empty()) return ERROR_NO_DATA;
  const ULONG needed = interfaces.size() * sizeof(Record);
  const ULONG given = *size;
  *size = needed;
  if (!list || given < needed) return ERROR_BUFFER_OVERFLOW;
  Record* last = nullptr;
  for (const Interface& interface : interfaces) {
    Record* record = new (list++) Record{};
    fill(interface, *record);
    if (last) last->Next = record;
    last = record;
  }
  return ERROR_SUCCESS;
} catch (const std::bad_alloc&) {
  return ERROR_NOT_ENOUGH_MEMORY;
}

class Device : public zvuti::KernelObject {
 public:
  explicit Device(std::string_view name) : name_(name) {}

  // Writes the permanent address to `out`, at most `size` bytes; returns its length, 0 without one.
  std::size_t PermanentAddress(void* out, std::size_t size) const {
    alignas(ethtool_perm_addr) unsigned char buffer[sizeof(ethtool_perm_addr) + 32] = {};
    auto* query = new (buffer) ethtool_perm_addr{};
    query->cmd = ETHTOOL_GPERMADDR;
    query->size = sizeof buffer - sizeof *query;
    ifreq request{};
    name_.copy(request.ifr_name, sizeof request.ifr_name - 1);
    request.ifr_data = reinterpret_cast<char*>(buffer);
    const int socketNumber = socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    if (socketNumber < 0) return 0;
    const bool answered = ioctl(socketNumber, SIOCETHTOOL, &request) == 0;
    close(socketNumber);
    const unsigned char* address = buffer + sizeof *query;
    const std::size_t length = std::min<std::size_t>({query->size, sizeof buffer - sizeof *query, size});
    if (!answered || std::all_of(address, address + length, [](auto byte) { return byte == 0; })) return 0;
    std::memcpy(out, address, length);
    return length;
  }

 private:
  const std::string name_;
};

}  // namespace

ULONG GetAdaptersInfo(IP_ADAPTER_INFO* list, ULONG* size) {
  return FillList(
      list, size, [](const Interface& interface) { return !interface.loopback; },
      [](const Interface& interface, IP_ADAPTER_INFO& record) {
        interface.name.copy(record.AdapterName, sizeof record.AdapterName - 1);
      });
}

ULONG GetAdaptersAddresses(ULONG family, ULONG flags, void*, IP_ADAPTER_ADDRESSES* list, ULONG* size) {
  if (family != AF_INET || flags != 0) return ERROR_INVALID_PARAMETER;
  return FillList(
      list, size, [](const Interface&) { return true; },
      [](const Interface& interface, IP_ADAPTER_ADDRESSES& record) {
        if (interface.loopback) return;
        record.PhysicalAddressLength = interface.address.size();
        std::memcpy(record.PhysicalAddress, interface.address.data(), interface.address.size());
      });
}

HANDLE CreateFileA(const char* path, DWORD, DWORD, SECURITY_ATTRIBUTES*, DWORD, DWORD, HANDLE) try {
  constexpr std::string_view kDevices = "//./";
  std::string_view name = path;
  if (name.substr(0, kDevices.size()) != kDevices) return INVALID_HANDLE_VALUE;
  name.remove_prefix(kDevices.size());
  if (if_nametoindex(path + kDevices.size()) == 0) return INVALID_HANDLE_VALUE;
  HANDLE handle = zvuti::HandleTo(std::make_shared<Device>(name));
  return handle ? handle : INVALID_HANDLE_VALUE;
} catch (const std::bad_alloc&) {
  return INVALID_HANDLE_VALUE;
}

int DeviceIoControl(HANDLE handle, DWORD code, void* in, DWORD inSize, void* out, DWORD outSize,
                    DWORD* returned, void*) {
  constexpr DWORD kQuery = 0x170002;
  constexpr std::uint32_t kPermanentAddress = 0x01010101;
  const auto device = std::dynamic_pointer_cast<Device>(zvuti::ObjectOf(handle));
  if (!device || code != kQuery || inSize != 4 || std::memcmp(in, &kPermanentAddress, 4) != 0) return 0;
  *returned = device->PermanentAddress(out, outSize);
  return *returned > 0 ? 1 : 0;
}
