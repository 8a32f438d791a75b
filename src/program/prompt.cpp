#include "program/prompt.hpp"

#include "worksheet/display/completion.hpp"

#include <histedit.h>

#include <cerrno>
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string_view>
#include <system_error>
#include <unistd.h>

namespace program {

namespace {

constexpr int history_length = 1000;

struct EditLineCloser {
    void operator()(EditLine* editor) const { el_end(editor); }
};
struct HistoryCloser {
    void operator()(History* history) const { history_end(history); }
};

/// Where the history is kept between runs; empty when there is no place for it.
std::string history_file()
{
    const char* const state = std::getenv("XDG_STATE_HOME");
    const char* const home = std::getenv("HOME");
    std::filesystem::path folder;
    if (state != nullptr && *state == '/')
        folder = state;
    else if (home != nullptr && *home == '/')
        folder = std::filesystem::path(home) / ".local" / "state";
    else
        return {};
    folder /= "bailuxsko";
    std::error_code failed; // no history is no reason to stop
    std::filesystem::create_directories(folder, failed);
    return failed ? std::string() : (folder / "history").string();
}

bool is_blank(std::string_view text)
{
    return text.find_first_not_of(" \t\r\n") == std::string_view::npos;
}

} // namespace

class Prompt::Editor {
public:
    Editor(const worksheet::Session& session, bool keep_output_clean) : m_session(session), m_file(history_file())
    {
        // A worksheet is UTF-8 whatever the environment says: elsewhere the editor would drop the first letter of a
        // micrometre unseen.
        if (std::setlocale(LC_CTYPE, "C.UTF-8") == nullptr)
            std::setlocale(LC_CTYPE, "");
        FILE* const output = keep_output_clean || ::isatty(STDOUT_FILENO) == 0 ? stderr : stdout;
        m_editor.reset(el_init("bailuxsko", stdin, output, stderr));
        m_history.reset(history_init());
        if (!m_editor || !m_history)
            return;
        EditLine* const editor = m_editor.get();
        el_set(editor, EL_CLIENTDATA, this);
        el_set(editor, EL_PROMPT, &Editor::prompt_text);
        el_set(editor, EL_EDITOR, "emacs");
        el_set(editor, EL_SIGNAL, 1);
        // by their wide form, which keeps the texts it is given: the narrow one makes copies that it never frees
        el_wset(editor, EL_ADDFN, L"complete", L"Complete the name before the cursor", &Editor::complete);
        el_set(editor, EL_BIND, "^I", "complete", nullptr);
        el_wset(editor, EL_ADDFN, L"drop", L"Drop the line", &Editor::drop);
        el_set(editor, EL_SETTY, "-d", "-isig", nullptr); // Control-C is a key while a line is edited
        el_set(editor, EL_BIND, "^C", "drop", nullptr);
        el_set(editor, EL_BIND, "^R", "em-inc-search-prev", nullptr);
        el_source(editor, nullptr); // the user's own key bindings
        HistEvent event{};
        history(m_history.get(), &event, H_SETSIZE, history_length);
        history(m_history.get(), &event, H_SETUNIQUE, 1);
        if (!m_file.empty())
            history(m_history.get(), &event, H_LOAD, m_file.c_str());
        el_set(editor, EL_HIST, history, m_history.get());
    }

    ~Editor() = default;
    Editor(const Editor&) = delete;
    Editor& operator=(const Editor&) = delete;

    bool read(std::string& statement)
    {
        statement.clear();
        m_continues = false;
        while (m_editor) {
            int count = 0;
            // before the prompt is shown: a key that answers it at once is the editor's and not the terminal's
            el_set(m_editor.get(), EL_PREP_TERM, 1);
            const char* const line = el_gets(m_editor.get(), &count);
            if (m_is_dropped) {
                statement.clear();
                m_is_dropped = m_continues = false;
                continue;
            }
            if (line == nullptr || count <= 0) {
                end_line("");
                return !statement.empty(); // what was begun is still evaluated, then the input is at its end
            }
            statement.append(line, static_cast<std::size_t>(count));
            if (!worksheet::is_unfinished(statement)) {
                remember(statement);
                return true;
            }
            m_continues = true;
        }
        return false;
    }

private:
    /// Saves the history too: Control-C in a long computation and a closed window end the program on the spot.
    void remember(std::string line)
    {
        if (is_blank(line))
            return;
        for (char& c : line)
            if (c == '\n')
                c = ' ';
        HistEvent event{};
        history(m_history.get(), &event, H_ENTER, line.c_str());
        if (!m_file.empty())
            history(m_history.get(), &event, H_SAVE, m_file.c_str());
    }

    /// What is shown next begins on a line of its own.
    void end_line(const char* text)
    {
        FILE* output = nullptr;
        el_get(m_editor.get(), EL_GETFP, 1, &output);
        std::fprintf(output, "%s\n", text);
        std::fflush(output);
    }

    static Editor* self(EditLine* editor)
    {
        Editor* owner = nullptr;
        el_get(editor, EL_CLIENTDATA, &owner);
        return owner;
    }

    static char* prompt_text(EditLine* editor)
    {
        static char first[] = "> ";
        static char next[] = ". ";
        return self(editor)->m_continues ? next : first;
    }

    static unsigned char complete(EditLine* editor, int /*key*/)
    {
        const LineInfo* const line = el_line(editor);
        const std::string_view before(line->buffer, static_cast<std::size_t>(line->cursor - line->buffer));
        const worksheet::display::Completion found = worksheet::display::complete_name(before, self(editor)->m_session);
        if (!found.addition.empty())
            return el_insertstr(editor, found.addition.c_str()) == 0 ? CC_REFRESH : CC_ERROR;
        if (found.choices.size() < 2)
            return CC_REFRESH_BEEP;
        FILE* output = nullptr;
        el_get(editor, EL_GETFP, 1, &output);
        std::fputc('\n', output);
        for (const std::string& choice : found.choices)
            std::fprintf(output, "%s  ", choice.c_str());
        std::fputc('\n', output);
        return CC_REDISPLAY;
    }

    static unsigned char drop(EditLine* editor, int /*key*/)
    {
        self(editor)->end_line("^C");
        self(editor)->m_is_dropped = true;
        return CC_EOF;
    }

    const worksheet::Session& m_session;
    const std::string m_file;
    bool m_continues = false;
    bool m_is_dropped = false;
    std::unique_ptr<EditLine, EditLineCloser> m_editor;
    std::unique_ptr<History, HistoryCloser> m_history;
};

Prompt::Prompt(const worksheet::Session& session, bool keep_output_clean)
    : m_editor(std::make_unique<Editor>(session, keep_output_clean))
{
}

Prompt::~Prompt() = default;

bool Prompt::read(std::string& statement)
{
    return m_editor->read(statement);
}

} // namespace program
