// The programming as text, compared, verified against a unit, and the backups of the
// transfers. Documents are read from private copies; a document is written only whole,
// and only when nothing was refused.
#include <filesystem>
#include <fstream>
#include <iostream>
#include <sstream>

#include "Commands.h"
#include "ConsolePrompter.h"
#include "PrivateDir.h"
#include "database/Backups.h"
#include "database/DocumentChecks.h"
#include "database/DocumentCommands.h"
#include "database/TableSource.h"
#include "protocol/ModComm.h"
#include "protocol/PosixSerialLine.h"
#include "protocol/ProgressWindow.h"
#include "protocol/ReceiveTransfer.h"
#include "shell/AppDir.h"
#include "shell/FileOps.h"
#include "shell/Session.h"
#include "textform/Differences.h"
#include "textform/TextForm.h"

namespace r6183::ctl {

namespace fs = std::filesystem;

namespace {

// Raised with what to tell the operator; the command ends with exit code 2.
struct Unreadable : std::runtime_error {
  using std::runtime_error::runtime_error;
};

std::string Template(Session& session) {
  if (!session.appDir().Has("DEFAULT")) throw Unreadable("no DEFAULT in " + session.appDir().DirString());
  return session.appDir().PathOf("DEFAULT");
}

// The programming of a document of this version, from a private copy.
Programming DocumentProgramming(Session& session, const std::string& file, std::vector<ClockType>* catalogue = nullptr) {
  PrivateDir dir;
  const std::string copy = PrivateCopy(file, dir);
  if (const FileFormat f = DetectFormat(copy); f == FileFormat::Jet3 || f == FileFormat::Jet4)
    throw Unreadable(file + " is of the older format (" + FormatName(f) + "); 'r6183ctl convert' brings it up to date");
  if (!ValidDatabase(session, copy)) throw Unreadable(file + " is not a valid programming document");
  if (catalogue) *catalogue = LoadClockCatalogue(copy);
  return ReadProgramming(copy);
}

std::string ReadText(const std::string& file) {
  std::ifstream in(file, std::ios::binary);
  if (!in) throw Unreadable("cannot read " + file);
  std::ostringstream text;
  text << in.rdbuf();
  return text.str();
}

// A text read through the rules, starting from the template; the refusals on stderr as
// FILE:LINE:COLUMN: text, all of them.
std::optional<Programming> TextProgramming(Session& session, const std::string& file) {
  const std::string templ = Template(session);
  const TextImport read = ReadProgrammingText(ReadText(file), ReadProgramming(templ), LoadClockCatalogue(templ),
                                              session.product.ProductModel);
  for (const TextRefusal& r : read.refusals)
    std::cerr << file << ':' << r.line << ':' << r.column << ": " << r.text << '\n';
  if (!read.refusals.empty()) return std::nullopt;
  return read.programming;
}

// A document or a text, by what the file is.
std::optional<Programming> AnyProgramming(Session& session, const std::string& file) {
  if (!fs::is_regular_file(file)) throw Unreadable("cannot read " + file + ": no such file");
  const FileFormat f = DetectFormat(file);
  if (f == FileFormat::Document || f == FileFormat::Jet3 || f == FileFormat::Jet4)
    return DocumentProgramming(session, file);
  return TextProgramming(session, file);
}

bool WriteText(const std::string& text, const std::string& file) {
  PrivateDir dir;
  const std::string part = dir / "text";
  std::ofstream(part, std::ios::binary) << text;
  return WriteWhole(part, file);
}

void PrintDifferences(const std::vector<std::string>& lines) {
  for (const std::string& line : lines) std::cout << line << '\n';
}

}  // namespace

int Export(Session& session, const std::string& file, const std::string& out) {
  try {
    std::vector<ClockType> catalogue;
    const Programming p = DocumentProgramming(session, file, &catalogue);
    std::vector<std::string> leftOut;
    const std::string text = ProgrammingText(p, catalogue, leftOut);
    for (const std::string& what : leftOut)
      std::cerr << "r6183ctl: left out, beyond the boards of " << file << ": " << what << '\n';
    if (out.empty()) {
      std::cout << text;
      return 0;
    }
    return WriteText(text, out) ? 0 : 1;
  } catch (const std::exception& e) {
    std::cerr << "r6183ctl: " << e.what() << '\n';
    return 2;
  }
}

int Import(Session& session, const std::string& text, const std::string& out, bool force) {
  if (fs::exists(out) && !force) {
    std::cerr << "r6183ctl: " << out << " exists (use --force to replace it)\n";
    return 1;
  }
  try {
    const auto p = TextProgramming(session, text);
    if (!p) {
      std::cerr << "r6183ctl: " << out << " was not written\n";
      return 1;
    }
    PrivateDir dir;
    const std::string doc = dir / "document.mdb";
    fs::copy_file(Template(session), doc);
    // the template's rows with the text's values: a valid document by its making
    WriteProgramming(*p, doc, true);
    if (!WriteWhole(doc, out)) return 1;
    std::cout << "created " << out << '\n';
    return 0;
  } catch (const std::exception& e) {
    std::cerr << "r6183ctl: " << e.what() << '\n';
    return 2;
  }
}

int Diff(Session& session, const std::string& a, const std::string& b) {
  try {
    const auto pa = AnyProgramming(session, a), pb = AnyProgramming(session, b);
    if (!pa || !pb) return 2;
    const auto lines = Differences(*pa, *pb, LoadClockCatalogue(Template(session)));
    PrintDifferences(lines);
    return lines.empty() ? 0 : 1;
  } catch (const std::exception& e) {
    std::cerr << "r6183ctl: " << e.what() << '\n';
    return 2;
  }
}

int Verify(Session& session, const std::string& file, const std::string& port, const std::string& dial) {
  try {
    const auto expected = AnyProgramming(session, file);
    if (!expected) return 2;
    const std::string device = DeviceOf(session, port);
    if (device.empty()) return 2;
    PrivateDir dir;
    session.state.WorkDbPath = dir / "~TEMP";  // a running desktop program keeps its own
    ModComm comm(session, [&](int16_t) { return std::make_unique<PosixSerialLine>(device); });
    ProgressWindow quiet;
    const int call = ThroughCall(session, comm, quiet, dial, [&] {
      mnuRx_Click(session, comm, quiet);
      return 0;
    });
    TellOpenFailure(comm, port);
    comm.Exit_Comm();
    if (call != 0 || session.state.CurrentFileName != "Untitled") {
      std::cerr << "r6183ctl: nothing was received from the unit\n";
      return 2;
    }
    const auto lines = Differences(*expected, ReadProgramming(session.state.WorkDbPath),
                                   LoadClockCatalogue(Template(session)));
    if (lines.empty()) {
      std::cout << "the unit holds the programming of " << file << '\n';
      return 0;
    }
    std::cout << "the unit differs from " << file << ":\n";
    PrintDifferences(lines);
    return 1;
  } catch (const std::exception& e) {
    std::cerr << "r6183ctl: " << e.what() << '\n';
    return 2;
  }
}

int Backups(Session& session) {
  for (const Backup& b : ListBackups(session.appDir())) {
    char when[32];
    std::snprintf(when, sizeof when, "%04d-%02d-%02d %02d:%02d:%02d", b.when.year, b.when.month, b.when.day,
                  b.when.hour, b.when.minute, b.when.second);
    std::cout << when << '\t' << b.kind << '\t' << b.path << '\n';
  }
  return 0;
}

}  // namespace r6183::ctl
