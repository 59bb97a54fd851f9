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
    "Examples:\n"
    "  quorvanectl presets list\n"
    "  quorvanectl presets list --json";

constexpr const char* showFooter =
    "Example:\n"
    "  quorvanectl presets show \"Fanatec factory defaults\"";

constexpr const char* applyFooter =
    "Writes what the base has of the preset, one value at a time, each read back.\n"
    "Ctrl-C finishes the value in flight.\n\n"
    "Example:\n"
    "  quorvanectl presets apply \"fanatec factory defaults\"";

constexpr const char* saveFooter =
    "Examples:\n"
    "  quorvanectl presets save \"My GT7\"\n"
    "  quorvanectl presets save --replace \"My GT7\"";

constexpr const char* deleteFooter =
    "Example:\n"
    "  quorvanectl presets delete \"My GT7\"";

constexpr const char* importFooter =
    "Takes share files, exported lists and files with a single preset.\n"
    "FILE \"-\" is standard input.\n\n"
    "Examples:\n"
    "  quorvanectl presets import friend.quorvane quorvane-presets.json\n"
    "  quorvanectl presets import - < shared-presets.json";

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
  std::string name;
  std::string file;
  std::vector<std::string> files;
  bool force = false;
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
    add("list", "List the built-in presets and your own", listFooter, listPresetsCommand);
    addWhich(
        add("show", "Show all that a preset holds", showFooter,
            [words = words_](auto& context) { return showPresetCommand(context, words->which); }));
  }

  void addUsing() {
    addWhich(
        add("apply", "Write a preset into the active set", applyFooter,
            [words = words_](auto& context) { return applyPresetCommand(context, words->which); }));
    addSave();
    addWhich(add(
        "delete", "Delete a preset of your own", deleteFooter,
        [words = words_](auto& context) { return deletePresetCommand(context, words->which); }));
  }

  void addExchange() {
    add("import", "Add the presets in files to your own", importFooter,
        [words = words_](auto& context) { return importPresetsCommand(context, words->files); })
        .add_option("files", words_->files, "The files to read")
        ->type_name("FILE")
        ->required();
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

  void addSave() {
    CLI::App& saving = add("save", "Save the base's present menu as a preset of your own",
                           saveFooter, [words = words_](auto& context) {
                             return savePresetCommand(context, words->name, words->force);
                           });
    saving.add_option("name", words_->name, "The new preset's name")->type_name("NAME")->required();
    saving.add_flag("--replace", words_->force, "Replace your preset of that name if there is one");
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
  parser.addExchange();
}

}  // namespace quorvane
