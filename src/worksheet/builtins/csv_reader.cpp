#include "worksheet/builtins/csv_reader.hpp"

#include "bailuxhost/matval.hpp"
#include "efiutl/records.hpp"
#include "worksheet/syntax/characters.hpp"
#include "worksheet/syntax/number_text.hpp"

#include <algorithm>
#include <limits>
#include <memory>
#include <new>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace worksheet {

namespace {

constexpr bool is_cell_blank(char c) noexcept
{
    return c == ' ' || c == '\t';
}

std::string_view without_blanks(std::string_view text) noexcept
{
    while (!text.empty() && is_cell_blank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && is_cell_blank(text.back()))
        text.remove_suffix(1);
    return text;
}

/// The number that a whole cell is.
std::optional<double> number_of(std::string_view cell) noexcept
{
    cell = without_blanks(cell);
    if (cell == "NaN")
        return std::numeric_limits<double>::quiet_NaN();
    const bool negative = cell.starts_with('-');
    if (cell == "inf" || cell == "-inf")
        return negative ? -std::numeric_limits<double>::infinity() : std::numeric_limits<double>::infinity();
    if (negative || cell.starts_with('+'))
        cell.remove_prefix(1);
    const ReadNumber read = read_number(cell);
    if (read.length == 0 || read.length != cell.size())
        return std::nullopt;
    return negative ? -read.value : read.value;
}

struct TextCell {
    std::size_t row;
    std::size_t column;
    Qud::Handle text;
};

class Reader {
public:
    explicit Reader(std::string_view content) : m_rest(content)
    {
        if (m_rest.starts_with("\xEF\xBB\xBF"))
            m_rest.remove_prefix(3);
        m_cells.reserve(m_rest.size() / 8);
    }

    Qud::Handle read()
    {
        while (!m_rest.empty())
            read_row();
        return matrix();
    }

private:
    void read_row()
    {
        m_column = 0;
        do
            read_cell();
        while (accept(','));
        if (!m_rest.empty())
            m_rest.remove_prefix(m_rest.front() == '\r' ? 2 : 1);
        ++m_line;
        m_row_ends.push_back(m_cells.size());
        m_columns = std::max(m_columns, m_column);
    }

    bool accept(char c)
    {
        if (m_rest.empty() || m_rest.front() != c)
            return false;
        m_rest.remove_prefix(1);
        return true;
    }

    bool at_cell_end() const noexcept
    {
        return m_rest.empty() || m_rest.front() == ',' || m_rest.front() == '\n' || m_rest.starts_with("\r\n");
    }

    void skip_blanks() noexcept
    {
        while (!m_rest.empty() && is_cell_blank(m_rest.front()))
            m_rest.remove_prefix(1);
    }

    void read_cell()
    {
        const std::string_view begin = m_rest;
        skip_blanks();
        if (!m_rest.empty() && m_rest.front() == '"') {
            add(quoted_cell());
            return;
        }
        // the usual cell: a number up to the comma
        const bool negative = accept('-');
        const ReadNumber read = read_number(m_rest);
        m_rest.remove_prefix(read.length);
        skip_blanks();
        if (read.length > 0 && at_cell_end()) {
            push(negative ? -read.value : read.value);
            return;
        }
        m_rest = begin;
        while (!at_cell_end())
            m_rest.remove_prefix(1);
        add(std::string(begin.substr(0, begin.size() - m_rest.size())));
    }

    /// What stands between the quotes, doubled ones halved, and what is left behind them.
    std::string quoted_cell()
    {
        std::string cell;
        m_rest.remove_prefix(1);
        while (!m_rest.empty()) {
            const std::size_t quote = std::min(m_rest.find('"'), m_rest.size());
            cell += m_rest.substr(0, quote);
            m_rest.remove_prefix(quote);
            if (accept('"') && !accept('"'))
                break;
            if (!m_rest.empty())
                cell += '"';
        }
        m_line += static_cast<std::size_t>(std::count(cell.begin(), cell.end(), '\n'));
        skip_blanks();
        while (!at_cell_end()) {
            cell += m_rest.front();
            m_rest.remove_prefix(1);
        }
        return cell;
    }

    void push(double value)
    {
        m_cells.push_back(value);
        ++m_column;
    }

    void add(std::string cell)
    {
        if (const std::optional<double> number = number_of(cell)) {
            push(*number);
            return;
        }
        if (!is_valid_utf8(cell))
            throw NotUtf8(m_line);
        m_texts.push_back({m_row_ends.size(), m_column, cell.empty() ? m_empty : Qud::StrVal::make(std::move(cell))});
        push(Efi::ptr_nan());
    }

    Qud::Handle matrix()
    {
        const std::size_t rows = m_row_ends.size();
        constexpr std::size_t most = std::numeric_limits<std::uint32_t>::max();
        if (rows == 0)
            return Qud::MatVal::empty();
        if (rows > most || m_columns > most)
            throw std::bad_alloc();
        const Qud::FreshNumbers real = Qud::fresh_numbers(
            Qud::element_count(static_cast<std::uint32_t>(rows), static_cast<std::uint32_t>(m_columns)));
        fill(real.get(), rows);
        return Qud::MatVal::make({.rows = static_cast<std::uint32_t>(rows),
                                  .cols = static_cast<std::uint32_t>(m_columns),
                                  .real = real,
                                  .imaginary = nullptr,
                                  .units = Qud::Dim::identity,
                                  .entries = entries(rows)});
    }

    /// Rows become columns, a strip of rows at a time, so that both sides stay in the cache.
    void fill(double* real, std::size_t rows)
    {
        constexpr std::size_t strip = 64;
        for (std::size_t first = 0; first < rows; first += strip) {
            const std::size_t last = std::min(first + strip, rows);
            for (std::size_t j = 0; j < m_columns; ++j)
                for (std::size_t i = first; i < last; ++i)
                    real[j * rows + i] = cell(i, j);
        }
    }

    double cell(std::size_t row, std::size_t column)
    {
        const std::size_t begin = row == 0 ? 0 : m_row_ends[row - 1];
        if (begin + column < m_row_ends[row])
            return m_cells[begin + column];
        m_texts.push_back({row, column, m_empty});
        return Efi::ptr_nan();
    }

    std::shared_ptr<const Qud::EntryTable> entries(std::size_t rows)
    {
        if (m_texts.empty())
            return nullptr;
        auto table = std::make_shared<Qud::EntryTable>();
        table->reserve(m_texts.size());
        for (TextCell& text : m_texts)
            table->push_back({text.column * rows + text.row, std::move(text.text)});
        std::sort(table->begin(), table->end(), [](const auto& a, const auto& b) { return a.index < b.index; });
        return table;
    }

    std::string_view m_rest;
    std::size_t m_line = 1;
    std::size_t m_column = 0;
    std::size_t m_columns = 0;
    std::vector<double> m_cells; ///< row by row
    std::vector<std::size_t> m_row_ends;
    std::vector<TextCell> m_texts;
    const Qud::Handle m_empty = Qud::StrVal::make({});
};

} // namespace

Qud::Handle matrix_from_csv(std::string_view content)
{
    return Reader(content).read();
}

} // namespace worksheet
