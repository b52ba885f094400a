#pragma once

#include "components/frame/Figure.h"
#include "platform/runtime/SearchText.h"

#include <span>
#include <unordered_map>
#include <vector>

namespace statistics {

/// Whose a row is: one customer's, or all but some. Key 0 stands for nobody.
struct CustomerScope
{
    QString caption;
    std::vector<int> keys;
    bool isAllBut = true;

    bool holds(int customer) const;
    /// "AND FIELD = 7 " for one customer, nothing for several.
    QString condition(const QString &field) const;
};

/// Amounts by customer in a fixed number of columns: the customers with the most in the leading column have a row each, all
/// others one together. Anyone can be set out of these.
class CustomerTable
{
public:
    static constexpr std::size_t mostShown = 20;
    struct Line
    {
        QString chart;
        QString name;
        std::vector<Sum> amounts;
    };

    CustomerTable(std::size_t columns, std::size_t leading)
        : columns_(columns)
        , leading_(leading)
    {
    }

    void clear();
    void add(int customer, std::span<const Sum> amounts);
    /// Reads the names of those who were added before it runs.
    Figure names();

    std::vector<Line> lines() const;
    std::vector<Sum> totals() const;
    /// The table and the chart of a sheet that has the columns of the amounts.
    void fill(Sheet &sheet) const;
    CustomerScope scopeOf(std::size_t line) const;

    /// All of them, those with the most first.
    runtime::SearchTexts searchTexts() const;
    /// Gives that one of the search texts a line, none where it is below zero; which line.
    int setOut(int place);

private:
    const std::vector<int> &ranked() const;
    /// The keys of the lines that are one customer's.
    std::vector<int> shown() const;
    QString nameOf(int customer) const;

    std::size_t columns_;
    std::size_t leading_;
    std::unordered_map<int, Line> customers_;
    mutable std::vector<int> ranked_; ///< keys; empty until somebody asks
    int setOut_ = -1;
};

} // namespace statistics
