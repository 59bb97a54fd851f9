#include "ui/shell/start_options.h"

#include <fmt/format.h>

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFile>
#include <algorithm>
#include <array>
#include <stdexcept>
#include <vector>

#include "simulator/simulate_option.h"
#include "support/version.h"
#include "ui/kit/text.h"

namespace quorvane {
namespace {

constexpr int wrongUsage = 2;

// An option of Qt's, which QApplication handles, with one dash or two.
struct QtOption {
  const char* name;
  bool takesValue;
};

constexpr std::array qtOptions{
    QtOption{"display", true},         QtOption{"geometry", true},
    QtOption{"platform", true},        QtOption{"platformpluginpath", true},
    QtOption{"platformtheme", true},   QtOption{"plugin", true},
    QtOption{"qwindowgeometry", true}, QtOption{"qwindowicon", true},
    QtOption{"qwindowtitle", true},    QtOption{"reverse", false},
    QtOption{"session", true},         QtOption{"style", true},
    QtOption{"stylesheet", true},      QtOption{"widgetcount", false},
};

// The option of Qt's that a word names: "-style", "--style" or "-style=NAME". Null for other words.
const QtOption* qtOption(const QString& word) {
  if (!word.startsWith(u'-')) return nullptr;
  const QString name = word.mid(word.startsWith(QStringLiteral("--")) ? 2 : 1).section(u'=', 0, 0);
  const auto* const found =
      std::find_if(qtOptions.begin(), qtOptions.end(),
                   [&](const QtOption& option) { return name == QLatin1String(option.name); });
  return found == qtOptions.end() ? nullptr : found;
}

// The words before "--" without Qt's options and their values, then the rest.
QStringList withoutQtOptions(const QStringList& words) {
  QStringList rest;
  bool isValue = false;
  for (qsizetype i = 0; i < words.size(); ++i) {
    if (words[i] == QStringLiteral("--")) return rest + words.mid(i);
    const QtOption* const option = isValue ? nullptr : qtOption(words[i]);
    if (option == nullptr && !isValue) rest += words[i];
    isValue = option != nullptr && option->takesValue && !words[i].contains(u'=');
  }
  return rest;
}

QStringList withProduct(const QStringList& words) {
  std::vector<std::string> plain;
  for (const QString& word : words) plain.push_back(text(word));
  QStringList result;
  for (const std::string& word : withSimulatedProduct(plain)) result += text(word);
  return result;
}

std::filesystem::path path(const QString& file) { return QFile::encodeName(file).toStdString(); }

// Qt takes the program's name from the application object, which may not exist yet.
QString helpText(const QCommandLineParser& parser) {
  if (QCoreApplication::instance() != nullptr) return parser.helpText();
  int count = 1;
  std::array<char, 9> name{"quorvane"};
  std::array<char*, 2> words{name.data(), nullptr};
  const QCoreApplication application(count, words.data());
  return parser.helpText();
}

}  // namespace

StartOptions parseStart(const QStringList& words, std::optional<StartText>& instead) {
  QCommandLineParser parser;
  parser.setApplicationDescription(
      QStringLiteral("Tunes a Fanatec wheel base.\n"
                     "Files are settings to import; a window that is open already takes them.\n"
                     "Qt's own options, such as -reverse, are accepted too."));
  const QCommandLineOption help({QStringLiteral("h"), QStringLiteral("help")},
                                QStringLiteral("Print this help and end."));
  const QCommandLineOption versionOption(QStringLiteral("version"),
                                         QStringLiteral("Print the version and end."));
  const QCommandLineOption simulate(
      QStringLiteral("simulate"),
      QStringLiteral("Use a simulated base. A product is a hexadecimal product ID or a part of a "
                     "name; it follows after \"=\" and may be left out. Commas between several "
                     "make several bases."),
      QStringLiteral("PRODUCT"));
  const QCommandLineOption state(
      QStringLiteral("simulate-state"),
      QStringLiteral("Keep what the simulated base is set to in a file, for later runs."),
      QStringLiteral("FILE"));
  const QCommandLineOption device(
      QStringLiteral("device"),
      QStringLiteral(
          "Connect to the base with this id, /dev/hidraw path or serial number, and wait "
          "for it while it is not attached (default: the first one found)."),
      QStringLiteral("WHICH"));
  const QCommandLineOption transcript(
      QStringLiteral("transcript"),
      QStringLiteral("Write what the simulated base was sent to a file at the end."),
      QStringLiteral("FILE"));
  parser.addOptions({device, simulate, state, transcript, help, versionOption});
  parser.addPositionalArgument(QStringLiteral("FILE"), QStringLiteral("Settings files to import."),
                               QStringLiteral("[FILE...]"));

  StartOptions options;
  if (!parser.parse(withProduct(withoutQtOptions(words)))) {
    instead = {parser.errorText() + QStringLiteral("\nRun with --help for more information.\n"),
               wrongUsage};
  } else if (parser.isSet(help)) {
    instead = {helpText(parser), 0};
  } else if (parser.isSet(versionOption)) {
    instead = {text(fmt::format("quorvane {} ({})\n", version(), commit())), 0};
  } else {
    for (const QString& file : parser.positionalArguments()) options.files.push_back(path(file));
    options.device = text(parser.value(device));
    if (parser.isSet(transcript)) options.transcript = path(parser.value(transcript));
    try {
      if (parser.isSet(state)) {
        requireBasesForState(text(parser.value(state)), parser.isSet(simulate));
        options.state = path(parser.value(state));
      }
      if (parser.isSet(simulate)) {
        options.simulated = productsToSimulate(text(parser.value(simulate)));
      }
    } catch (const std::invalid_argument& error) {
      instead = {QString::fromUtf8(error.what()) + u'\n', wrongUsage};
    }
  }
  return options;
}

}  // namespace quorvane
