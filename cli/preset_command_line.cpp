#include "cli/preset_command_line.h"

#include <CLI/CLI.hpp>
#include <memory>

#include "cli/preset_commands.h"

namespace quorvane {
namespace {

constexpr const char* groupFooter =
    "A preset is named by its name or its id. Built-in ones can be named too.\n"
    "builtin:NAME and mine:NAME tell a built-in preset from one of yours.\n\n"
    "Examples:\n"
    "  quorvanectl presets list\n"
    "  quorvanectl presets show \"Fanatec factory defaults\"\n"
    "  quorvanectl presets save \"My GT7\"\n"
    "  quorvanectl presets apply \"My GT7\"";

constexpr const char* listFooter =
    "Each word of TEXT must be in the name, game, source or notes of a preset, in either case.\n"
    "A word such as FF=80 or SEN=AUTO compares a value; FF= takes any.\n\n"
    "Examples:\n"
    "  quorvanectl presets list\n"
    "  quorvanectl presets list --search \"rain FF=80\"\n"
    "  quorvanectl presets list --game \"Gran Turismo 7\" --json";

constexpr const char* showFooter =
    "Example:\n"
    "  quorvanectl presets show \"Fanatec factory defaults\"";

constexpr const char* applyFooter =
    "Writes what the base has of the preset, one value at a time, each read back.\n"
    "Ctrl-C finishes the value in flight.\n\n"
    "Examples:\n"
    "  quorvanectl presets apply \"fanatec factory defaults\"\n"
    "  quorvanectl presets apply \"My GT7\" --dry-run";

constexpr const char* saveFooter =
    "Examples:\n"
    "  quorvanectl presets save \"My GT7\"\n"
    "  quorvanectl presets save \"My GT7\" --game \"Gran Turismo 7\" --notes \"Max Torque 5\"\n"
    "  quorvanectl presets save --replace \"My GT7\"";

constexpr const char* editFooter =
    "Changes the texts that are given; the values, the id and the place in the list stay.\n\n"
    "Examples:\n"
    "  quorvanectl presets edit \"My GT7\" --name \"GT7, rain\"\n"
    "  quorvanectl presets edit \"My GT7\" --game \"Gran Turismo 7\" --notes \"Max Torque 5\"";

constexpr const char* duplicateFooter =
    "A copy of your own comes right after it, a copy of a built-in one at the end of yours.\n\n"
    "Examples:\n"
    "  quorvanectl presets duplicate \"My GT7\"\n"
    "  quorvanectl presets duplicate \"Fanatec factory defaults\" --name \"My defaults\"";

constexpr const char* moveFooter =
    "Examples:\n"
    "  quorvanectl presets move \"My GT7\" --first\n"
    "  quorvanectl presets move \"My GT7\" --after Rain";

constexpr const char* deleteFooter =
    "Example:\n"
    "  quorvanectl presets delete \"My GT7\"";

constexpr const char* versionsFooter =
    "Up to twenty are kept, the oldest go first. Numbers count up and never change.\n\n"
    "Examples:\n"
    "  quorvanectl presets versions\n"
    "  quorvanectl presets versions --json";

constexpr const char* restoreFooter =
    "Replaces all of your presets; those are kept as a version too.\n\n"
    "Example:\n"
    "  quorvanectl presets restore 12 --yes";

constexpr const char* importFooter =
    "Takes share files, exported lists and files with a single preset.\n"
    "FILE \"-\" is standard input. With --text, FILE is a text such as \"SEN AUTO, FF: 100\",\n"
    "and becomes one preset; what was not understood is listed, and kept as its notes.\n\n"
    "Examples:\n"
    "  quorvanectl presets import friend.quorvane quorvane-presets.json\n"
    "  quorvanectl presets import - < shared-presets.json\n"
    "  quorvanectl presets import --text - --name \"From the forum\" < message.txt";

constexpr const char* exportFooter =
    "FILE \"-\" is standard output.\n\n"
    "Examples:\n"
    "  quorvanectl presets export quorvane-presets.json\n"
    "  quorvanectl presets export - \"My GT7\" | jq .";

constexpr const char* shareFooter =
    "FILE \"-\" is standard output. Share files end in .quorvane as a rule.\n\n"
    "Examples:\n"
    "  quorvanectl presets share my-base.quorvane\n"
    "  quorvanectl presets share gt7.quorvane --preset \"My GT7\"";

// The arguments of one command, filled in by CLI11.
struct PresetWords {
  std::string which;
  std::vector<std::string> several;
  PresetTexts texts;
  PresetFilter filter;
  PresetPlace place;
  std::string file;
  std::vector<std::string> files;
  std::string number;
  bool force = false;
  bool yes = false;
  bool dryRun = false;
  bool text = false;
};

// Adds the commands one by one. The commands' functions share ownership of the words.
class PresetParser {
 public:
  PresetParser(CLI::App& app, ParsedCommands& commands)
      : presets_(*app.add_subcommand("presets", "List, apply, save and exchange presets")),
        commands_(commands) {
    presets_.require_subcommand(1);
    presets_.footer(groupFooter);
  }

  void addListing() {
    CLI::App& listing =
        add("list", "List the built-in presets and your own", listFooter,
            [words = words_](auto& context) { return listPresetsCommand(context, words->filter); });
    listing.add_option("--search", words_->filter.search, "List only presets with these words")
        ->type_name("TEXT");
    addText(listing, "--game", words_->filter.game, "GAME", "List only presets for this game");
    addWhich(
        add("show", "Show all that a preset holds", showFooter,
            [words = words_](auto& context) { return showPresetCommand(context, words->which); }));
  }

  void addUsing() {
    addApply();
    addSave();
    addWhich(add(
        "delete", "Delete a preset of your own", deleteFooter,
        [words = words_](auto& context) { return deletePresetCommand(context, words->which); }));
  }

  void addEditing() {
    addEdit();
    addDuplicate();
    addMove();
  }

  void addVersions() {
    add("versions", "List former versions of your presets", versionsFooter, presetVersionsCommand);
    CLI::App& restoring = add("restore", "Go back to a former version of your presets",
                              restoreFooter, [words = words_](auto& context) {
                                return restorePresetsCommand(context, words->number, words->yes);
                              });
    restoring.add_option("number", words_->number, "The number that presets versions shows")
        ->type_name("NUMBER")
        ->required();
    restoring.add_flag("--yes", words_->yes, "Replace your presets by it");
  }

  void addExchange() {
    addImport();
    CLI::App& exporting =
        add("export", "Write your own presets, or those named, to a file", exportFooter,
            [words = words_](auto& context) {
              return exportPresetsCommand(context, words->file, words->several, words->force);
            });
    addFile(exporting);
    exporting.add_option("which", words_->several, "The presets to write (default: your own)")
        ->type_name("WHICH");
    addShare();
  }

 private:
  template <typename Run>
  CLI::App& add(const char* name, const char* help, const char* end, Run run) {
    CLI::App& parser = *presets_.add_subcommand(name, help);
    parser.footer(end);
    commands_.push_back({&parser, std::move(run)});
    return parser;
  }

  void addApply() {
    CLI::App& applying = add("apply", "Write a preset into the active set", applyFooter,
                             [words = words_](auto& context) {
                               return applyPresetCommand(context, words->which, words->dryRun);
                             });
    addWhich(applying);
    applying.add_flag("--dry-run", words_->dryRun, "Only print what would be written");
  }

  void addImport() {
    CLI::App& importing =
        add("import", "Add the presets in files to your own", importFooter,
            [words = words_](auto& context) {
              if (!words->text && words->texts.name) throw UsageError("--name is for --text");
              return words->text ? importPresetTextCommand(context, words->files, words->texts.name)
                                 : importPresetsCommand(context, words->files);
            });
    importing.add_option("files", words_->files, "The files to read")
        ->type_name("FILE")
        ->required();
    importing.add_flag("--text", words_->text, "Read settings from text that people send");
    addText(importing, "--name", words_->texts.name, "NAME", "With --text: the new preset's name");
  }

  void addSave() {
    CLI::App& saving = add("save", "Save the base's present menu as a preset of your own",
                           saveFooter, [words = words_](auto& context) {
                             return savePresetCommand(context, words->texts, words->force);
                           });
    addText(saving, "name", words_->texts.name, "NAME", "The new preset's name")->required();
    addText(saving, "--game", words_->texts.game, "GAME", "The game that it is for");
    addText(saving, "--notes", words_->texts.notes, "TEXT",
            "Notes, such as the settings in the game");
    saving.add_flag("--replace", words_->force, "Replace your preset of that name if there is one");
  }

  void addEdit() {
    CLI::App& editing = add("edit", "Change the texts of a preset of your own", editFooter,
                            [words = words_](auto& context) {
                              return editPresetCommand(context, words->which, words->texts);
                            });
    addWhich(editing);
    addText(editing, "--name", words_->texts.name, "NAME", "Its new name");
    addText(editing, "--game", words_->texts.game, "GAME", "The game that it is for");
    addText(editing, "--source", words_->texts.source, "TEXT", "Who published the values");
    addText(editing, "--notes", words_->texts.notes, "TEXT",
            "Notes, such as the settings in the game");
  }

  void addDuplicate() {
    CLI::App& duplicating =
        add("duplicate", "Copy a preset, yours or built in, to your own", duplicateFooter,
            [words = words_](auto& context) {
              return duplicatePresetCommand(context, words->which, words->texts.name);
            });
    addWhich(duplicating);
    addText(duplicating, "--name", words_->texts.name, "NAME",
            "The copy's name (default: the original's and \"copy\")");
  }

  void addMove() {
    CLI::App& moving = add("move", "Move a preset of your own in the list", moveFooter,
                           [words = words_](auto& context) {
                             return movePresetCommand(context, words->which, words->place);
                           });
    addWhich(moving);
    addText(moving, "--before", words_->place.before, "WHICH", "Put it before this one of yours");
    addText(moving, "--after", words_->place.after, "WHICH", "Put it after this one of yours");
    moving.add_flag("--first", words_->place.first, "Put it first");
    moving.add_flag("--last", words_->place.last, "Put it last");
  }

  void addShare() {
    CLI::App& sharing = *presets_.add_subcommand(
        "share", "Write the base's present menu, or a preset, as a file to send to someone");
    sharing.footer(shareFooter);
    addFile(sharing);
    const CLI::Option* const preset =
        sharing.add_option("--preset", words_->which, "Share this preset; no base is needed")
            ->type_name("WHICH");
    commands_.push_back({&sharing, [words = words_, preset](const CommandContext& context) {
                           const bool isNamed = preset->count() > 0;
                           return sharePresetCommand(
                               context, words->file,
                               isNamed ? std::optional(words->which) : std::nullopt, words->force);
                         }});
  }

  // An option with a text, which may be empty. CLI11 itself reads an empty std::optional as none.
  CLI::Option* addText(CLI::App& parser, const char* name, std::optional<std::string>& text,
                       const char* type, const char* help) {
    const auto set = [words = words_, &text](const std::string& typed) { text = typed; };
    return parser.add_option_function<std::string>(name, set, help)->type_name(type);
  }

  void addWhich(CLI::App& parser) {
    parser.add_option("which", words_->which, "The preset's name or id")
        ->type_name("WHICH")
        ->required();
  }

  void addFile(CLI::App& parser) {
    parser.add_option("file", words_->file, "The file to write")->type_name("FILE")->required();
    parser.add_flag("--force", words_->force, "Replace the file if there is one");
  }

  CLI::App& presets_;
  ParsedCommands& commands_;
  const std::shared_ptr<PresetWords> words_ = std::make_shared<PresetWords>();
};

}  // namespace

void addPresetCommands(CLI::App& app, ParsedCommands& commands) {
  PresetParser parser(app, commands);
  parser.addListing();
  parser.addUsing();
  parser.addEditing();
  parser.addVersions();
  parser.addExchange();
}

}  // namespace quorvane
