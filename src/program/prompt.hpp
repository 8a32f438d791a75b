#pragma once

#include "worksheet/session.hpp"

#include <memory>
#include <string>

namespace program {

/// The prompt of a terminal: line editing, a history that outlives the program, completion of names.
class Prompt {
public:
    /// @param keep_output_clean   shows the prompt on standard error
    Prompt(const worksheet::Session& session, bool keep_output_clean);
    ~Prompt();
    Prompt(const Prompt&) = delete;
    Prompt& operator=(const Prompt&) = delete;

    /// Reads the next statement, over several lines while a bracket is open. False at the end of the input.
    bool read(std::string& statement);

private:
    class Editor;
    std::unique_ptr<Editor> m_editor;
};

} // namespace program
