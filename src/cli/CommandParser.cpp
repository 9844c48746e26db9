#include "cli/CommandParser.h"

#include "cli/ArgumentMarks.h"
#include "cli/PlainText.h"
#include "platform/Version.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <memory>
#include <utility>

namespace fernhop::cli {

namespace {

constexpr const char *browserHelp = "Browser: its identifier, or its name if only one browser has it";
constexpr const char *appHelp =
    "Source application: its identifier, or its name if only one application has it";
constexpr const char *jsonHelp = "Print one JSON document";

/// The grammar of the command line and, once it has parsed arguments, the command.
class Grammar {
  public:
    Grammar() : app("Opens each link in the browser that your rules choose.", "fernhop") {
        app.set_help_flag("-h,--help", "Print this help and exit");
        app.set_version_flag("--version", std::string("fernhop ") + programVersion(),
                             "Print the version and exit");
        app.require_subcommand(0, 1);
        setLabels();
        addLinkCommands();
        addLists();
        addURLRuleCommands();
        addAppRuleCommands();
        addSwitches();
        addTransfer();
        addDialogs();
        addLifecycle();
        // Last, because a subcommand copies the footer that its parent has when it is added.
        app.footer(
            "Without a command, runs Fernhop in this session, in the foreground.\n"
            "Arguments after \"--\" are never options. Exit status: 0 success, 1 failure, 2 wrong usage.");
    }

    CLI::App app;
    Command command = command::Run{};

  private:
    /// A subcommand of `parent` that yields a `Kind`; `declare` binds its options to the record.
    template <typename Kind, typename Declare>
    void add(CLI::App &parent, const std::string &name, const std::string &description, Declare declare) {
        CLI::App *subcommand = parent.add_subcommand(name, description);
        auto record = std::make_shared<Kind>();
        declare(*subcommand, *record);
        subcommand->callback([this, record] { command = *record; });
    }

    template <typename Kind>
    void addList(CLI::App &parent, const std::string &name, const std::string &description) {
        add<Kind>(parent, name, description,
                  [](CLI::App &list, Kind &record) { list.add_flag("--json", record.json, jsonHelp); });
    }

    template <typename Kind>
    void addOnOff(const std::string &name, const std::string &description) {
        CLI::App *subcommand = app.add_subcommand(name, description);
        auto state = std::make_shared<std::string>();
        subcommand->add_option("STATE", *state, "\"on\" or \"off\"")
            ->required()
            ->check(CLI::IsMember({"on", "off"}).description(""))
            ->type_name("");
        subcommand->callback([this, state] { command = Kind{*state == "on"}; });
    }

    static void addText(CLI::App &subcommand, const std::string &name, std::string &text,
                        const std::string &help) {
        subcommand.add_option(name, text, help)->required();
    }

    CLI::App &addGroup(const std::string &name, const std::string &description) {
        CLI::App *group = app.add_subcommand(name, description);
        group->require_subcommand(1);
        return *group;
    }

    /// Sets the labels of help texts.
    void setLabels() {
        const auto formatter = app.get_formatter();
        formatter->label("SUBCOMMAND", "COMMAND");
        formatter->label("Positionals", "Arguments");
        formatter->label("TEXT", "");
        formatter->label("REQUIRED", "");
        app.group("Commands"); // subcommands inherit it
    }

    void addLinkCommands();
    void addLists();
    void addURLRuleCommands();
    void addAppRuleCommands();
    void addSwitches();
    void addTransfer();
    void addDialogs();
    void addLifecycle();
};

void Grammar::addLinkCommands() {
    add<command::Open>(app, "open", "Open links as if another application had opened them",
                       [](CLI::App &open, command::Open &record) {
                           open.add_option("URL", record.urls, "Links to open, in this order")->required();
                       });
    add<command::Explain>(app, "explain", "Show which browser a link would open in, and why",
                          [](CLI::App &explain, command::Explain &record) {
                              explain
                                  .add_option(
                                      "--source", record.source,
                                      "Application that the link comes from: its identifier, or its name if "
                                      "only one has it; default: the current source application")
                                  ->type_name("APP");
                              explain.add_flag("--json", record.json, jsonHelp);
                              addText(explain, "URL", record.url, "Link to explain");
                          });
    add<command::Match>(
        app, "match", "Test whether the pattern of a URL rule matches URLs",
        [](CLI::App &match, command::Match &record) {
            match.footer("Prints \"yes\" or \"no\" for each URL. Exits with 0 if all match, else with 1.");
            addText(match, "PATTERN", record.pattern,
                    "Part of a URL; or, with \"*\" for any characters, a pattern for the whole URL");
            match.add_option("URL", record.urls, "URLs to test; default: the lines of standard input");
        });
}

void Grammar::addLists() {
    addList<command::Status>(app, "status",
                             "Show the state of Fernhop and problems that keep links from arriving");
    addList<command::ListApps>(app, "apps", "List the installed applications");
    addList<command::ListBrowsers>(app, "browsers", "List the installed browsers");
}

void Grammar::addURLRuleCommands() {
    constexpr const char *idHelp = "Identifier of the rule, as listed";
    constexpr const char *patternHelp = "Part of the URLs to match; or, with \"*\" for any characters, a "
                                        "pattern for the whole URL";
    CLI::App &rules = addGroup("url-rules", "List and change the URL rules; the first match decides");
    addList<command::ListURLRules>(rules, "list", "List the URL rules in their order");
    add<command::AddURLRule>(
        rules, "add",
        "Add a rule at the end, or change the browser of the rule with this pattern; turns App "
        "Routing on",
        [](CLI::App &rule, command::AddURLRule &record) {
            addText(rule, "PATTERN", record.pattern, patternHelp);
            addText(rule, "BROWSER", record.browser, browserHelp);
        });
    add<command::EditURLRule>(rules, "edit", "Change a rule and keep its position; turns App Routing on",
                              [](CLI::App &rule, command::EditURLRule &record) {
                                  addText(rule, "ID", record.id, idHelp);
                                  addText(rule, "PATTERN", record.pattern, patternHelp);
                                  addText(rule, "BROWSER", record.browser, browserHelp);
                              });
    add<command::RemoveURLRule>(
        rules, "remove", "Remove a rule",
        [](CLI::App &rule, command::RemoveURLRule &record) { addText(rule, "ID", record.id, idHelp); });
}

void Grammar::addAppRuleCommands() {
    CLI::App &rules =
        addGroup("app-rules", "List and change the app rules, which choose by the source application");
    addList<command::ListAppRules>(rules, "list", "List the app rules");
    add<command::SetAppRule>(rules, "set",
                             "Choose the browser for an application's links; turns App Routing on",
                             [](CLI::App &rule, command::SetAppRule &record) {
                                 addText(rule, "APP", record.app, appHelp);
                                 addText(rule, "BROWSER", record.browser, browserHelp);
                             });
    add<command::RemoveAppRule>(
        rules, "remove", "Remove the rule of an application",
        [](CLI::App &rule, command::RemoveAppRule &record) { addText(rule, "APP", record.app, appHelp); });
}

void Grammar::addSwitches() {
    addOnOff<command::SwitchRouting>("routing",
                                     "Turn App Routing on, or turn it off and restore the default browser");
    add<command::SetDefault>(app, "default",
                             "Make a browser the system's default, which turns App Routing off",
                             [](CLI::App &choice, command::SetDefault &record) {
                                 addText(choice, "BROWSER", record.browser, browserHelp);
                             });
    addOnOff<command::RestoreOnQuit>("restore-on-quit",
                                     "Choose whether the default browser is restored when Fernhop quits");
}

void Grammar::addTransfer() {
    add<command::Export>(app, "export", "Write all rules and settings as one JSON document",
                         [](CLI::App &transfer, command::Export &record) {
                             transfer.add_option("FILE", record.file,
                                                 "File to write; default, or \"-\": standard output");
                         });
    add<command::Import>(app, "import", "Replace all rules and settings with those of an exported document",
                         [](CLI::App &transfer, command::Import &record) {
                             addText(transfer, "FILE", record.file, "File to read; \"-\": standard input");
                         });
}

void Grammar::addDialogs() {
    using Kind = command::ShowDialog::Kind;
    CLI::App &dialogs = addGroup("dialog", "Open a dialog of the running Fernhop");
    const auto addDialog = [&](const std::string &name, Kind kind, const std::string &description,
                               const std::string &subject = "", const std::string &subjectHelp = "") {
        add<command::ShowDialog>(dialogs, name, description,
                                 [&](CLI::App &dialog, command::ShowDialog &record) {
                                     record.kind = kind;
                                     if (!subject.empty())
                                         addText(dialog, subject, record.subject, subjectHelp);
                                 });
    };
    addDialog("add-app-rules", Kind::addAppRules, "Choose a browser for several applications");
    addDialog("edit-app-rule", Kind::editAppRule, "Choose a browser for one application", "APP", appHelp);
    addDialog("add-url-rule", Kind::addURLRule, "Add a URL rule");
    addDialog("edit-url-rule", Kind::editURLRule, "Change a URL rule", "ID",
              "Identifier of the rule, as listed");
    addDialog("feedback", Kind::feedback, "Show how to contact the developer");
}

void Grammar::addLifecycle() {
    add<command::Refresh>(app, "refresh", "Rescan the installed applications and browsers",
                          [](CLI::App &, command::Refresh &) {});
    add<command::Quit>(app, "quit", "Quit the running Fernhop", [](CLI::App &, command::Quit &) {});
}

void unprotect(std::string &word) {
    word = unprotected(std::move(word));
}

/// Removes the marks from the arguments of a command.
struct Unprotect {
    void operator()(command::Open &open) const { std::ranges::for_each(open.urls, unprotect); }
    void operator()(command::Explain &explain) const {
        unprotect(explain.url);
        if (explain.source)
            unprotect(*explain.source);
    }
    void operator()(command::Match &match) const {
        unprotect(match.pattern);
        std::ranges::for_each(match.urls, unprotect);
    }
    void operator()(command::AddURLRule &rule) const {
        unprotect(rule.pattern);
        unprotect(rule.browser);
    }
    void operator()(command::EditURLRule &rule) const {
        unprotect(rule.id);
        unprotect(rule.pattern);
        unprotect(rule.browser);
    }
    void operator()(command::RemoveURLRule &rule) const { unprotect(rule.id); }
    void operator()(command::SetAppRule &rule) const {
        unprotect(rule.app);
        unprotect(rule.browser);
    }
    void operator()(command::RemoveAppRule &rule) const { unprotect(rule.app); }
    void operator()(command::SetDefault &choice) const { unprotect(choice.browser); }
    void operator()(command::ShowDialog &dialog) const { unprotect(dialog.subject); }
    void operator()(command::Export &transfer) const { unprotect(transfer.file); }
    void operator()(command::Import &transfer) const { unprotect(transfer.file); }
    template <typename WithoutArguments>
    void operator()(WithoutArguments &) const {}
};

CommandResult usageError(const CLI::App &app, const std::string &message) {
    const std::string help = "Try 'fernhop --help' or 'fernhop COMMAND --help'.\n";
    return {exitStatus::usage, "", app.get_name() + ": " + plain(withoutMarks(message)) + "\n" + help};
}

} // namespace

std::variant<Command, CommandResult> parseCommand(const std::vector<std::string> &words) {
    Grammar grammar;
    auto remaining = protectedArguments(words);
    std::ranges::reverse(remaining); // the parser takes them from the end
    try {
        grammar.app.parse(std::move(remaining));
    } catch (const CLI::CallForHelp &) {
        return CommandResult{exitStatus::success, grammar.app.help(), ""};
    } catch (const CLI::CallForVersion &version) {
        return CommandResult{exitStatus::success, std::string(version.what()) + "\n", ""};
    } catch (const CLI::Error &error) {
        return usageError(grammar.app, error.what());
    }
    std::visit(Unprotect{}, grammar.command);
    return std::move(grammar.command);
}

} // namespace fernhop::cli
