// The parts of the Wireshark plugin that are the same whatever the records: what stands before their table
// and the program after it. ./run interop runs it in Wireshark 4.0, which has Lua 5.2.
#pragma once

namespace tool {

inline constexpr const char* kDissectorHead =
    R"lua(-- Made by 'zvuti export wireshark'. Shows the records of ZvUtiLib in packets.
--
-- Each record is a protocol, such as zvuti_itemrecord, with the record's fields as filters, such as
-- zvuti_itemrecord.ItemKey. Set its ports in the preferences of the protocol, or pick it with "Decode As".
-- In a stream the record repeats until the bytes end, and may cross packets. The bytes do not say which
-- record they are: with the wrong one the values are wrong.

)lua";

inline constexpr const char* kDissectorProgram = R"lua(
local by_name = {}
for _, record in ipairs(records) do by_name[record.name] = record end

local general = Proto("zvuti", "ZvUtiLib records")
local length_field = ProtoField.uint16("zvuti.length", "Length")
local element_field = ProtoField.none("zvuti.element", "Element")
general.fields = { length_field, element_field }
local short = ProtoExpert.new("zvuti.short", "The bytes end early", expert.group.MALFORMED, expert.severity.ERROR)
local unknown = ProtoExpert.new("zvuti.unknown", "Unknown tag", expert.group.MALFORMED, expert.severity.WARN)
general.experts = { short, unknown }

local function integer_field(bits, signed, path, name)
  return ProtoField[(signed and "int" or "uint") .. bits](path, name)
end

-- The fields that show a row: `own`, and those of what it consists of.
local make = {
  integer = function(row, path) row.own = integer_field(row.bits, row.signed, path, row.name) end,
  code = function(row, path) row.own = ProtoField.uint8(path, row.name) end,
  tag = function(row, path) row.own = ProtoField.uint32(path, row.name, base.HEX, row.tags) end,
  text = function(row, path) row.own = ProtoField.string(path, row.name) end,
  sequence = function(row, path)
    row.own = ProtoField.uint16(path, row.name)
    if not row.of then row.element = ProtoField.string(path .. ".element", row.name) end
  end,
  map = function(row, path)
    row.own = ProtoField.int32(path, row.name)
    if row.of then return end
    row.key = integer_field(32, row.signed_keys, path .. ".key", "Key")
    row.value = integer_field(32, row.signed, path .. ".value", "Value")
  end,
  record = function(row, path) row.own = ProtoField.none(path, row.name) end,
  base = function() end,
  reserved = function(row, path) row.own = ProtoField.bytes(path, row.name) end,
  count = function(row, path) row.own = integer_field(row.bits, row.signed, path, row.name) end,
  key = function(row, path) row.own = integer_field(row.bits, row.signed, path .. ".key", "Key") end,
  length = function(row, path) row.own = integer_field(row.bits, row.signed, path .. ".length", "Length") end,
  element = function(row, path) row.own = integer_field(row.bits, row.signed, path .. ".element", "Element") end,
  value = function() end,
  entries = function() end,
}

local function make_fields(rows, prefix, fields)
  for _, row in ipairs(rows) do
    make[row.form](row, prefix .. (row.name or ""))
    for _, kind in ipairs({ "own", "element", "key", "value" }) do
      if row[kind] then fields[#fields + 1] = row[kind] end
    end
    if row.rows then make_fields(row.rows, prefix, fields) end
  end
end

-- What ends the walk over a record: the bytes do, or a tag after which the library reads no further.
local SHORT, STOP = {}, {}

-- The walk is at the byte `at` of `bytes`. It shows items below `tree`, or nothing if that is nil.
local Walk = {}
Walk.__index = Walk

function Walk:take(count)
  if self.bytes:len() - self.at < count then error(SHORT) end
  local range = self.bytes(self.at, count)
  self.at = self.at + count
  return range
end

-- Shows an integer; returns its value. One of 64 bits is returned to 53 bits, shown in full.
function Walk:integer(field, bits, signed, tree)
  local range = self:take(bits / 8)
  local item = tree and tree:add_le(field, range)
  if bits == 64 then return range:le_uint64():tonumber(), item end
  return signed and range:le_int() or range:le_uint(), item
end

function Walk:text(field, tree)
  local start = self.at
  local count = self:take(2):le_uint()
  self.at = start
  if self.bytes:len() - start - 2 < count then error(SHORT) end
  local prefix, range = self:take(2), self:take(count)
  if not tree then return end
  local item = tree:add_packet_field(field, range, ENC_GB18030)
  item:add_le(length_field, prefix)
end

-- A subtree for all bytes that `show` walks over.
function Walk:group(tree, field, label, show)
  if not tree then return show(nil) end
  local start = self.at
  local group = tree:add(field, self.bytes(start, self.bytes:len() - start))
  if label then group:set_text(label) end
  show(group)
  group:set_len(self.at - start)
end

local show = {
  integer = function(walk, row, tree) return (walk:integer(row.own, row.bits, row.signed, tree)) end,
  code = function(walk, row, tree) return (walk:integer(row.own, 8, false, tree)) end,
  tag = function(walk, row, tree)
    local tag, item = walk:integer(row.own, 32, false, tree)
    if row.tags[tag] then return end
    if item then item:add_proto_expert_info(unknown) end
    if row.stops then error(STOP) end
  end,
  text = function(walk, row, tree) walk:text(row.own, tree) end,
  sequence = function(walk, row, tree)
    local count, item = walk:integer(row.own, 16, false, tree)
    for i = 1, count do
      if row.of then
        walk:group(item, element_field, ("[%d] %s"):format(i - 1, row.of), function(group)
          walk:record(by_name[row.of], group)
        end)
      else
        walk:text(row.element, item)
      end
    end
  end,
  map = function(walk, row, tree)
    local count, item = walk:integer(row.own, 32, true, tree)
    for i = 1, count do
      walk:group(item, element_field, ("[%d]"):format(i - 1), function(group)
        if row.of then return walk:record(by_name[row.of], group) end
        walk:integer(row.key, 32, row.signed_keys, group)
        walk:integer(row.value, 32, row.signed, group)
      end)
    end
  end,
  record = function(walk, row, tree)
    walk:group(tree, row.own, nil, function(group) walk:record(by_name[row.of], group) end)
  end,
  base = function(walk, row, tree) walk:record(by_name[row.of], tree) end,
  reserved = function(walk, row, tree)
    local range = walk:take(row.bits / 8)
    if tree then tree:add(row.own, range) end
  end,
}

-- A record whose maps have their counts apart from the entries.
function show.count(walk, row, tree, counts)
  counts[row.name] = walk:integer(row.own, row.bits, row.signed, tree)
end

function show.entries(walk, row, tree, counts)
  for i = 1, counts[row.name] do
    walk:group(tree, element_field, ("%s [%d]"):format(row.name, i - 1), function(group)
      local length = 0
      for _, part in ipairs(row.rows) do
        if part.form == "value" then
          walk:record(by_name[part.of], group)
        elseif part.form == "element" then
          for _ = 1, length do walk:integer(part.own, part.bits, part.signed, group) end
        else
          local value = walk:integer(part.own, part.bits, part.signed, group)
          if part.form == "length" then length = value end
        end
      end
    end)
  end
end

function Walk:record(record, tree)
  local values, counts = {}, {}
  for _, row in ipairs(record.rows) do
    if not row.present or row.present(values) then
      local value = show[row.form](self, row, tree, counts)
      if value then values[row.name] = value end
    end
  end
end

-- Walks over one record. Returns the number of its bytes, and SHORT or STOP if it is not complete.
local function walk_record(record, bytes, at, tree)
  local walk = setmetatable({ bytes = bytes, at = at }, Walk)
  local done, problem = pcall(walk.record, walk, record, tree)
  if not done and problem ~= SHORT and problem ~= STOP then error(problem, 0) end
  return walk.at - at, not done and problem or nil
end

-- Shows one record after the other. A record that crosses packets is looked at again when more bytes came.
local function dissect(record, bytes, pinfo, tree)
  pinfo.cols.protocol = "ZvUtiLib"
  pinfo.cols.info = record.name
  local at, problem, size = 0, nil, 0
  while at < bytes:len() and not problem do
    size, problem = walk_record(record, bytes, at, nil)
    if problem == SHORT and pinfo.can_desegment > 0 then
      pinfo.desegment_offset = at
      pinfo.desegment_len = DESEGMENT_ONE_MORE_SEGMENT
      return bytes:len()
    end
    local top = tree:add(record.proto, bytes(at, problem and bytes:len() - at or size))
    walk_record(record, bytes, at, top)
    if problem == SHORT then top:add_proto_expert_info(short) end
    at = at + size
  end
  return bytes:len()
end

for _, record in ipairs(records) do
  local name = "zvuti_" .. record.name:lower()
  local fields = {}
  record.proto = Proto(name, "ZvUtiLib " .. record.name)
  make_fields(record.rows, name .. ".", fields)
  record.proto.fields = fields
  record.proto.prefs.ports =
    Pref.range("Ports", "", "TCP and UDP ports whose bytes are records of this type", 65535)
  function record.proto.dissector(bytes, pinfo, tree) return dissect(record, bytes, pinfo, tree) end

  local tables = { DissectorTable.get("tcp.port"), DissectorTable.get("udp.port") }
  local ports = ""
  for _, known in ipairs(tables) do known:add_for_decode_as(record.proto) end
  function record.proto.prefs_changed()
    for _, known in ipairs(tables) do
      if ports ~= "" then known:remove(ports, record.proto) end
      if record.proto.prefs.ports ~= "" then known:add(record.proto.prefs.ports, record.proto) end
    end
    ports = record.proto.prefs.ports
  end
end
)lua";

}  // namespace tool
