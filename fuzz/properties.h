#pragma once

#include <span>
#include <string_view>

#include "support/bytes.h"

// Properties that must hold for any input bytes. A function returns if its property holds, else it
// ends the program with a line about the failure. Each has its own input format. None keeps state
// between inputs or leaves a file behind.
namespace quorvane::Fuzz {

// The summaries of a report descriptor agree with the complete parse of its elements, and both
// with a parse of the bytes item by item. Known differences:
//
//   Push and Pop   the summaries ignore them; the elements handle the first 64 levels
//   overflow       a report of 2^63 bits or more ends the summaries; the elements place what
//                  follows outside of every report. The kernel makes no node for such a device.
//
// So the two agree if Push and Pop are removed from the descriptor, and also if each Pop is
// replaced by the items that it restores.
void descriptor(ByteView bytes);

// A descriptor's elements decode reports correctly: a report rebuilt from its values is equal to
// the report, a repeated report gives no new values, and an array entry that is no longer listed is
// reported as gone. Input: the descriptor's length in two bytes, the descriptor, then reports, each
// an ID, a length and that many bytes.
void elements(ByteView bytes);

// A session that receives any reports keeps the latest of each kind, byte for byte, calls its
// handlers, and writes each kept value back as the byte it was received as. Input: a product, then
// reports, each with a leading byte that has its kind in the upper two bits and its length in the
// others.
void reports(ByteView bytes);

// A preset file loads or throws DecodingError. Loaded presets are equal after saving and loading
// again. A file that does not load is kept under another name by a save. Input: the file.
void presetFile(ByteView bytes);

// The same for imported and exported files: share files, lists, single presets.
void shareFile(ByteView bytes);

// The parsers of a device's uevent text and of udev rules. Input: a uevent text, a zero byte, a
// rules file.
void uevent(ByteView bytes);

// The words of a command line are parsed, but not run, and completed. Input: one word per line.
void words(ByteView bytes);

// The parser of edits to stage. Input: their text.
void demoStage(ByteView bytes);

// Settings in a text survive as a text, and every part of it that is no setting is listed. Input:
// the text.
void settingsText(ByteView bytes);

// A simulated base accepts any packets, keeps a menu that is valid for its product, answers
// requests, and records every malformed packet. Input: a product, a behaviour, then packets like
// those of `reports`.
void simbase(ByteView bytes);

// Fails for input that begins with "bug!", to test that failures are detected.
void planted(ByteView bytes);

struct Property {
  std::string_view name;  // of its fuzzer, seeds and dictionary
  void (*check)(ByteView bytes);
};

// All but the planted one.
std::span<const Property> properties();

// Also finds the planted property. Ends the program if there is no property of that name.
Property propertyNamed(std::string_view name);

}  // namespace quorvane::Fuzz
