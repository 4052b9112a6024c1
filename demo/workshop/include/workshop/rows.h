// Rows of a workshop's tables, by the meaning of their columns. A missing value is stored as Null, an empty
// text as an empty text: real data have both.
#pragma once

#include <optional>
#include <vector>

#include <basic/text.h>
#include <basic/variant.h>

namespace quardele::workshop {

using basic::Text;
using basic::TextView;

struct Customer {
    Text code;
    Text name;
    Text street;
    std::optional<Text> building;
    std::optional<Text> postBox;
    Text postcode;
    Text town;
    std::optional<Text> country;
    Text contact;
    Text telephone;
    Text fax;
    std::optional<Text> remarks;
    basic::Currency balance;
};

struct Vehicle {
    Text registration;
    std::optional<Text> customer;  ///< a code, not always of a customer that exists
    Text make;
    std::optional<Text> model;
    basic::Date firstUse;
    int kilometres = 0;
    Text serialNumber;
    Text energy;
    int power = 0;  ///< in fiscal horsepower
    Text colour;
    std::optional<Text> fleetNumber;
    std::optional<Text> driver;
    bool marked = false;
    std::optional<Text> note1;
    std::optional<Text> note2;
};

/// A periodic visit: one per vehicle and type of work.
struct Visit {
    Text registration;
    Text work;
    std::optional<basic::Date> last;
    std::optional<int> months;  ///< 0: no reminder
};

/// A job that was done or is planned. Its number follows from its place.
struct Job {
    std::optional<Text> customer;
    std::optional<Text> kind;
    Text label;
    std::optional<Text> details;
    std::optional<Text> registration;  ///< may end in blanks
    std::optional<Text> site;
    basic::Date planned;
    std::optional<basic::Date> left;
    std::vector<Text> vehicles;  ///< registrations of its detail rows
};

/// Rows that come before those that are made up. None of their registrations is made up again, and no
/// customer code of a single letter and digits.
struct GivenRows {
    std::vector<Customer> customers;
    std::vector<Vehicle> vehicles;
    std::vector<Visit> visits;
    std::vector<Job> jobs;
};

}  // namespace quardele::workshop
