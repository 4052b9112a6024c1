#include "tree.h"

#include <cctype>

namespace quardele::sql::differential {

namespace {

template <class Part, class WritePart>
std::string Listed(const std::vector<Part>& parts, const WritePart& write) {
    std::string text;
    for (const Part& part : parts) {
        text += (text.empty() ? "" : ", ") + write(part);
    }
    return text;
}

/// SQLite knows no truth values, and expressions have no collation there.
std::string WriteItem(const Expression& item, Side side) {
    const std::string text = Write(item, side);
    if (side != Side::SQLite) {
        return text;
    }
    if (item.kind == Kind::Condition) {
        return "-(" + text + ")";
    }
    return item.kind == Kind::Text ? "(" + text + ") COLLATE OURS" : text;
}

std::string Write(const From& from, Side side) {
    if (!from.join.empty()) {
        const From& right = from.parts[1];
        const std::string rightText = Write(right, side);
        return Write(from.parts[0], side) + " " + from.join + " JOIN " +
               (right.join.empty() ? rightText : "(" + rightText + ")") + " ON " + Write(*from.on, side);
    }
    const std::string what =
        from.query != nullptr ? "(" + Write(*from.query, side) + ")" : TableName(from.table, side);
    return what + " AS " + from.alias;
}

std::string WriteOrder(const Select& select, Side side) {
    return Listed(select.order, [&](const Order& order) {
        std::string text = std::to_string(order.item + 1);
        if (side != Side::SQLite && order.spelling == Order::Spelling::Name) {
            text = "c" + std::to_string(order.item);
        } else if (side != Side::SQLite && order.spelling == Order::Spelling::Whole) {
            text = Write(select.items[order.item], side);
        }
        return text + (order.descending ? " DESC" : "");
    });
}

std::string WriteItems(const Select& select, Side side) {
    std::size_t number = 0;
    return Listed(select.items, [&](const Expression& item) {
        return WriteItem(item, side) + " AS c" + std::to_string(number++);
    });
}

}  // namespace

std::string TableName(int table, Side side) {
    return (side == Side::Indexed ? "Q" : "P") + std::to_string(table);
}

std::string Write(const Expression& expression, Side side) {
    const std::string& pattern = side == Side::SQLite ? expression.theirs : expression.ours;
    std::string text;
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        if (pattern[i] != '$') {
            text += pattern[i];
            continue;
        }
        const char what = pattern[++i];
        text += what == 'q' ? Write(*expression.query, side)
                            : Write(expression.parts[static_cast<std::size_t>(what - '0')], side);
    }
    return text;
}

std::string Write(const Select& select, Side side) {
    std::string text = select.distinct ? "SELECT DISTINCT " : "SELECT ";
    if (select.top > 0 && side != Side::SQLite) {
        text += "TOP " + std::to_string(select.top) + (select.percent ? " PERCENT " : " ");
    }
    text += WriteItems(select, side) + " FROM " +
            Listed(select.from, [side](const From& from) { return Write(from, side); });
    if (select.where) {
        text += " WHERE " + Write(*select.where, side);
    }
    if (!select.groups.empty()) {
        text += " GROUP BY " +
                Listed(select.groups, [side](const Expression& group) { return WriteItem(group, side); });
    }
    if (select.having) {
        text += " HAVING " + Write(*select.having, side);
    }
    if (select.united != nullptr) {
        text += (select.unionAll ? " UNION ALL " : " UNION ") + Write(*select.united, side);
    }
    const bool ordered = !select.order.empty() && (!select.ownOrder || side == Side::SQLite);
    return ordered ? text + " ORDER BY " + WriteOrder(select, side) : text;
}

}  // namespace quardele::sql::differential
