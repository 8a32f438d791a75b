#include "worksheet/display/matrix_layout.hpp"

#include "worksheet/display/number_text.hpp"
#include "worksheet/display/text_width.hpp"
#include "worksheet/display/unit_text.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <deque>
#include <optional>

namespace worksheet::display {

namespace {

constexpr std::string_view gap = "...";
constexpr std::size_t between_columns = 2;
constexpr std::size_t brackets = 4; // "[ " and " ]"
constexpr std::size_t widest_text = 40;
constexpr std::size_t fewest_nested_rows = 4;
constexpr int deepest_drawn = 3;

// What columns of numbers are aligned by. A real number has a head and a tail, a complex one all of them.
enum Piece : std::size_t { re_head, re_tail, sign, im_head, im_tail, unit_behind, piece_count };

struct Cell {
    std::array<std::string, piece_count> pieces; // of a number
    std::vector<std::string> lines;              // of a text or nested array
};

struct Column {
    std::vector<Cell> cells; // one for each shown row
    std::array<std::size_t, piece_count> widths{};
    std::size_t width = 0;
};

bool is_right_aligned(std::size_t piece)
{
    return piece == re_head || piece == im_head;
}

Cell number_cell(double re, double im, const std::string& unit)
{
    Cell cell;
    const NumberText real = number_text(re);
    cell.pieces[re_head] = real.head;
    cell.pieces[re_tail] = real.tail;
    if (im != 0.0) { // NaN included
        const NumberText imaginary = number_text(std::abs(im));
        cell.pieces[sign] = std::signbit(im) && !std::isnan(im) ? " - " : " + ";
        cell.pieces[im_head] = imaginary.head;
        cell.pieces[im_tail] = imaginary.tail + "i";
        if (!unit.empty()) {
            cell.pieces[re_head].insert(cell.pieces[re_head].begin(), '(');
            cell.pieces[im_tail] += ')';
        }
    }
    if (!unit.empty())
        cell.pieces[unit_behind].append(1, ' ').append(unit);
    return cell;
}

std::string number_unit_text(const Qud::Dim& unit, const ShownUnit* shown)
{
    return shown != nullptr ? shown->text : unit_text(unit);
}

std::string quoted(const std::string& text)
{
    std::string inside(1, '"');
    for (const char c : cut_in_the_middle(printable(text), widest_text)) {
        if (c == '"')
            inside += '\\';
        inside += c;
    }
    return inside += '"';
}

std::string size_text(const Qud::MatVal& M)
{
    return std::to_string(M.Rows()) + " by " + std::to_string(M.Cols());
}

/// Which of `count` rows are shown: all, or the first and last of them around one gap.
struct Shown {
    std::size_t head;
    std::size_t tail;
    bool is_cut;
};

Shown choose(std::size_t count, std::size_t room)
{
    if (count <= room)
        return {.head = count, .tail = 0, .is_cut = false};
    return {.head = (room + 1) / 2, .tail = room / 2, .is_cut = true};
}

/// One matrix on its way to lines.
class Layout {
public:
    Layout(const Qud::MatVal& M, const Room& room, const ShownUnit* shown, int depth)
        : m_M(M), m_room(room), m_shown(shown), m_depth(depth), m_rows(choose(M.Rows(), room.rows)),
          m_has_common_unit(M.IsUniformScalar() || (shown != nullptr && !M.has_entries()))
    {
    }

    std::vector<std::string> lines()
    {
        choose_columns();
        std::vector<std::string> result;
        for (std::size_t r = 0; r < m_rows.head + m_rows.tail; ++r) {
            if (m_rows.is_cut && r == m_rows.head)
                result.push_back("  " + std::string(gap));
            draw_row(r, result);
        }
        if (m_has_common_unit) {
            const std::string unit = number_unit_text(m_M.UniformDimension(), m_shown);
            if (!unit.empty())
                result.back() += ' ' + unit;
        }
        if (m_rows.is_cut || m_columns_cut)
            result.push_back(std::string(gap) + ' ' + size_text(m_M));
        return result;
    }

private:
    std::size_t row_of(std::size_t shown_row) const
    {
        return shown_row < m_rows.head ? shown_row : m_M.Rows() - m_rows.tail + (shown_row - m_rows.head);
    }

    Cell make_cell(std::size_t i, std::size_t j) const
    {
        Cell cell;
        const Qud::Handle* const entry = m_M.entry(i, j);
        if (entry == nullptr) {
            const double factor = m_shown != nullptr ? m_shown->factor : 1.0;
            return number_cell(m_M.real(i, j) / factor, m_M.imag(i, j) / factor,
                               m_has_common_unit ? std::string() : number_unit_text(m_M.unit(i, j), m_shown));
        }
        if (const Qud::MatVal* const nested = Qud::matrix_of(*entry)) {
            cell.lines = nested_lines(*nested);
        } else if (const std::string* const text = (*entry)->get_IsString()) {
            cell.lines = {quoted(*text)};
        }
        return cell;
    }

    std::vector<std::string> nested_lines(const Qud::MatVal& nested) const
    {
        const std::size_t width = m_room.width - std::min(m_room.width, brackets);
        if (m_depth < deepest_drawn) {
            const Room room{.width = width, .rows = std::max(fewest_nested_rows, m_room.rows / 2)};
            std::vector<std::string> drawn = matrix_lines(nested, room, m_shown, m_depth + 1);
            if (std::all_of(drawn.begin(), drawn.end(),
                            [&](const std::string& line) { return text_width(line) <= width; }))
                return drawn;
        }
        return {std::string(1, '[').append(size_text(nested)).append(" array]")};
    }

    Column make_column(std::size_t j) const
    {
        Column column;
        for (std::size_t r = 0; r < m_rows.head + m_rows.tail; ++r) {
            column.cells.push_back(make_cell(row_of(r), j));
            const Cell& cell = column.cells.back();
            for (std::size_t piece = 0; piece < piece_count; ++piece)
                column.widths[piece] = std::max(column.widths[piece], text_width(cell.pieces[piece]));
            for (const std::string& line : cell.lines)
                column.width = std::max(column.width, text_width(line));
        }
        std::size_t numbers = 0;
        for (const std::size_t width : column.widths)
            numbers += width;
        column.width = std::max(column.width, numbers);
        return column;
    }

    /// Takes all columns where they fit; otherwise as many as fit from both ends, the left one first.
    void choose_columns()
    {
        const std::size_t count = m_M.Cols();
        const std::size_t room = m_room.width - std::min(m_room.width, brackets);
        std::size_t width = 0;
        while (m_left.size() < count) {
            m_left.push_back(make_column(m_left.size()));
            width += m_left.back().width + (m_left.size() == 1 ? 0 : between_columns);
            if (width > room)
                break;
        }
        if (width <= room || count == 1)
            return;

        m_columns_cut = true;
        std::deque<Column> computed;
        computed.swap(m_left);
        width = gap.size();
        for (std::size_t taken = 0; taken < count; ++taken) {
            const bool from_left = taken % 2 == 0;
            const std::size_t left = m_left.size();
            Column column = !from_left               ? make_column(count - 1 - m_right.size())
                            : left < computed.size() ? computed[left]
                                                     : make_column(left);
            width += column.width + between_columns;
            if (width > room && taken > 0)
                break;
            if (from_left)
                m_left.push_back(std::move(column));
            else
                m_right.push_front(std::move(column));
        }
    }

    static std::string number_line(const Column& column, const Cell& cell)
    {
        std::string line;
        for (std::size_t piece = 0; piece < piece_count; ++piece) {
            const std::string padding(column.widths[piece] - text_width(cell.pieces[piece]), ' ');
            line += is_right_aligned(piece) ? padding + cell.pieces[piece] : cell.pieces[piece] + padding;
        }
        return line;
    }

    static std::string line_of(const Column& column, std::size_t r, std::size_t line)
    {
        const Cell& cell = column.cells[r];
        std::string text;
        if (!cell.lines.empty())
            text = line < cell.lines.size() ? cell.lines[line] : std::string();
        else if (line == 0)
            text = number_line(column, cell);
        return text.append(column.width - text_width(text), ' ');
    }

    void draw_row(std::size_t r, std::vector<std::string>& result) const
    {
        std::size_t height = 1;
        for (const std::deque<Column>* side : {&m_left, &m_right})
            for (const Column& column : *side)
                height = std::max(height, column.cells[r].lines.size());

        for (std::size_t line = 0; line < height; ++line) {
            std::string text = line == 0 ? "[" : " ";
            const auto add = [&](const std::string& cell) {
                text += std::string(text.size() == 1 ? 1 : between_columns, ' ') + cell;
            };
            for (const Column& column : m_left)
                add(line_of(column, r, line));
            if (m_columns_cut)
                add(line == 0 ? std::string(gap) : std::string(gap.size(), ' '));
            for (const Column& column : m_right)
                add(line_of(column, r, line));
            if (line + 1 == height)
                text += " ]";
            else
                text.erase(text.find_last_not_of(' ') + 1);
            result.push_back(std::move(text));
        }
    }

    const Qud::MatVal& m_M;
    const Room& m_room;
    const ShownUnit* const m_shown;
    const int m_depth;
    const Shown m_rows;
    const bool m_has_common_unit;
    bool m_columns_cut = false;
    std::deque<Column> m_left;
    std::deque<Column> m_right;
};

} // namespace

std::string scalar_text(double re, double im, const Qud::Dim& unit, const ShownUnit* shown)
{
    const double factor = shown != nullptr ? shown->factor : 1.0;
    const std::string unit_name = number_unit_text(unit, shown);
    if (re == 0.0 && im != 0.0)
        return number_text(im / factor).text() + 'i' + (unit_name.empty() ? "" : ' ' + unit_name);
    std::string text;
    for (const std::string& piece : number_cell(re / factor, im / factor, unit_name).pieces)
        text += piece;
    return text;
}

std::vector<std::string> matrix_lines(const Qud::MatVal& M, const Room& room, const ShownUnit* shown, int depth)
{
    if (M.is_empty())
        return {M.Rows() == 0 && M.Cols() == 0 ? std::string("[]") : "[] " + size_text(M)};
    return Layout(M, room, shown, depth).lines();
}

} // namespace worksheet::display
