#include "protocol/PortMap.h"

#include <libserialport.h>

#include <algorithm>
#include <cctype>
#include <charconv>
#include <filesystem>
#include <set>

#include "shell/ErrorNumbers.h"
#include "shell/IniFile.h"
#include "shell/Text.h"

namespace r6183 {

namespace fs = std::filesystem;

namespace {

// "ttyS2" before "ttyS10": runs of digits compare by value.
bool NaturalLess(const std::string& a, const std::string& b) {
  std::size_t i = 0, j = 0;
  while (i < a.size() && j < b.size()) {
    if (std::isdigit(static_cast<unsigned char>(a[i])) && std::isdigit(static_cast<unsigned char>(b[j]))) {
      std::size_t ei = i, ej = j;
      while (ei < a.size() && std::isdigit(static_cast<unsigned char>(a[ei]))) ++ei;
      while (ej < b.size() && std::isdigit(static_cast<unsigned char>(b[ej]))) ++ej;
      std::string_view da(a.data() + i, ei - i), db(b.data() + j, ej - j);
      while (da.size() > 1 && da[0] == '0') da.remove_prefix(1);
      while (db.size() > 1 && db[0] == '0') db.remove_prefix(1);
      if (da.size() != db.size()) return da.size() < db.size();
      if (da != db) return da < db;
      i = ei;
      j = ej;
    } else {
      if (a[i] != b[j]) return a[i] < b[j];
      ++i;
      ++j;
    }
  }
  return a.size() - i < b.size() - j;
}

// The order free numbers take the devices in: USB adapters by their by-id name (those
// without one after), then the rest by device name.
bool DiscoveryOrder(const DiscoveredPort& a, const DiscoveredPort& b) {
  const bool ua = a.transport == PortTransport::Usb, ub = b.transport == PortTransport::Usb;
  if (ua != ub) return ua;
  if (ua && a.byId.empty() != b.byId.empty()) return !a.byId.empty();
  if (ua && !a.byId.empty() && a.byId != b.byId)
    return NaturalLess(fs::path(a.byId).filename().string(), fs::path(b.byId).filename().string());
  return NaturalLess(a.device, b.device);
}

}  // namespace

std::vector<PortInfo> MapPorts(Journal& journal, const std::string& settingsPath,
                               const std::vector<DiscoveredPort>& discovered) {
  std::vector<DiscoveredPort> found = discovered;
  std::stable_sort(found.begin(), found.end(), DiscoveryOrder);
  auto findDevice = [&](const std::string& device) {
    return std::find_if(found.begin(), found.end(),
                        [&](const DiscoveredPort& d) { return d.device == device || d.byId == device; });
  };

  INIClass ini(journal);
  ini.SetFileName(settingsPath);
  ini.SetSectionName("Ports");
  std::vector<PortInfo> ports(kPortCount);
  std::set<std::string> used;  // devices already given a number
  for (int n = 1; n <= kPortCount; ++n) {
    PortInfo& p = ports[n - 1];
    p.number = n;
    p.device = Trim(ini.ReadString_From_INI("Com " + std::to_string(n)));
    if (p.device.empty()) continue;
    used.insert(p.device);
    if (const auto d = findDevice(p.device); d != found.end()) {
      p.description = d->description;
      used.insert(d->device);
      if (!d->byId.empty()) used.insert(d->byId);
    }
  }
  auto next = found.begin();
  for (PortInfo& p : ports) {
    if (!p.device.empty()) continue;
    while (next != found.end() && used.count(next->device)) ++next;
    if (next == found.end()) break;
    p.device = next->device;
    p.description = next->description;
    used.insert(next->device);
  }
  return ports;
}

std::string DescribeUsb(const std::string& manufacturer, const std::string& product,
                        const std::string& serial, const std::string& fallback) {
  std::string text = manufacturer;
  if (!product.empty()) text += (text.empty() ? "" : " ") + product;
  if (text.empty()) text = fallback;
  if (!serial.empty()) text += (text.empty() ? "" : " ") + ("(" + serial + ")");
  return text;
}

std::vector<DiscoveredPort> DiscoverPorts() {
  std::vector<DiscoveredPort> result;
  sp_port** list = nullptr;
  if (sp_list_ports(&list) != SP_OK || !list) return result;
  // the by-id links, resolved
  std::vector<std::pair<fs::path, std::string>> links;
  std::error_code ec;
  for (fs::directory_iterator it("/dev/serial/by-id", ec), end; !ec && it != end; it.increment(ec)) {
    const fs::path target = fs::canonical(it->path(), ec);
    if (!ec) links.emplace_back(target, it->path().string());
    ec.clear();
  }
  auto text = [](const char* s) { return s ? std::string(s) : std::string(); };
  for (sp_port** p = list; *p; ++p) {
    DiscoveredPort d;
    d.device = text(sp_get_port_name(*p));
    const std::string description = text(sp_get_port_description(*p));
    switch (sp_get_port_transport(*p)) {
      case SP_TRANSPORT_USB:
        d.transport = PortTransport::Usb;
        d.description = DescribeUsb(text(sp_get_port_usb_manufacturer(*p)), text(sp_get_port_usb_product(*p)),
                                    text(sp_get_port_usb_serial(*p)), description);
        break;
      case SP_TRANSPORT_BLUETOOTH:
        d.transport = PortTransport::Bluetooth;
        d.description = description;
        break;
      default:
        d.description = description;
        break;
    }
    const fs::path real = fs::canonical(d.device, ec);
    for (const auto& [target, link] : links)
      if (!ec && target == real) d.byId = link;
    ec.clear();
    result.push_back(std::move(d));
  }
  sp_free_port_list(list);
  return result;
}

std::string DeviceForPort(const std::vector<PortInfo>& ports, const std::string& port) {
  const std::string text = Trim(port);
  if (!text.empty() && text[0] == '/') return text;
  int n = 0;
  const auto r = std::from_chars(text.data(), text.data() + text.size(), n);
  if (text.empty() || r.ec != std::errc() || r.ptr != text.data() + text.size() || n < 1 || n > kPortCount)
    throw RuntimeError(err::BadFileNameOrNumber, "no port " + text + ": give 1 to 16 or a device path");
  for (const PortInfo& p : ports)
    if (p.number == n && !p.device.empty()) return p.device;
  throw RuntimeError(err::BadFileNameOrNumber, "port " + text + " has no device");
}

std::string DeviceForPort(Journal& journal, const std::string& settingsPath, const std::string& port) {
  return DeviceForPort(MapPorts(journal, settingsPath, DiscoverPorts()), port);
}

}  // namespace r6183
