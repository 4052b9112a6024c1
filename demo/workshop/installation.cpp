#include <workshop/installation.h>

#include <fstream>
#include <string>
#include <system_error>

#include <basic/date.h>
#include <basic/runtime_error.h>

#include "generator.h"
#include "reference_rows.h"
#include "row_writer.h"
#include "structure.h"

namespace quardele::workshop {

namespace fs = std::filesystem;

namespace {

using basic::Null;
using jet::Variant;

constexpr int kVehicleFields = 22;
/// Number of the first job.
constexpr std::int32_t kFirstJob = 100'001;
constexpr const char* kLocalParameters =
    "MIRE=OFF\r\n"
    "DEVCAL=EUR\r\n"
    "SITE=PAR IS\r\n"
    "CALENDRIER = 1\r\n";

Variant OrNull(const std::optional<Text>& text) {
    return text ? Variant(*text) : Variant(Null{});
}

Variant OrNull(const std::optional<basic::Date>& date) {
    return date ? Variant(*date) : Variant(Null{});
}

/// A folder that cannot be made shows when a file is made in it.
void MakeFolder(const fs::path& folder) {
    std::error_code ignored;
    fs::create_directories(folder, ignored);
}

void WriteLocalParameters(const fs::path& file) {
    std::ofstream stream(file, std::ios::binary);
    stream << kLocalParameters;
    if (!stream.flush()) {
        throw basic::RuntimeError(basic::error::kPathFileAccess);
    }
}

DatabasePtr MakeFile(const fs::path& file, const Tables& tables) {
    DatabasePtr database = jet::Database::Create(file);
    jet::Step step = database->Begin();
    for (const jet::TableDesign& table : tables) {
        database->CreateTable(table);
    }
    step.Commit();
    return database;
}

void WriteCustomers(const DatabasePtr& data, const Generator& generator) {
    RowWriter writer(data, u"TCLI");
    for (int i = 0; i < generator.CustomerCount(); ++i) {
        const Customer customer = generator.CustomerAt(i);
        writer.Add({customer.code, customer.name, customer.street, OrNull(customer.building),
                    OrNull(customer.postBox), customer.postcode, customer.town, OrNull(customer.country),
                    customer.contact, customer.telephone, customer.fax, OrNull(customer.remarks),
                    customer.balance});
    }
    writer.Finish();
}

/// The user fields, in the order in which the parameters describe them.
std::vector<Variant> UserFieldsOf(const Vehicle& vehicle) {
    std::vector<Variant> fields(kVehicleFields, Null{});
    fields[0] = basic::Format(vehicle.firstUse, u"dd/mm/yyyy");
    fields[1] = basic::FromUtf8(std::to_string(vehicle.kilometres));
    fields[2] = vehicle.serialNumber;
    fields[3] = vehicle.energy;
    fields[5] = basic::FromUtf8(std::to_string(vehicle.power));
    fields[6] = vehicle.colour;
    fields[7] = OrNull(vehicle.fleetNumber);
    fields[9] = OrNull(vehicle.driver);
    return fields;
}

void WriteVehicles(const DatabasePtr& data, const Generator& generator, Notes notes) {
    RowWriter writer(data, u"TVEH");
    for (int i = 0; i < generator.VehicleCount(); ++i) {
        const Vehicle vehicle = generator.VehicleAt(i);
        std::vector<Variant> row = {vehicle.registration, OrNull(vehicle.customer), vehicle.make,
                                    OrNull(vehicle.model)};
        const std::vector<Variant> fields = UserFieldsOf(vehicle);
        row.insert(row.end(), fields.begin(), fields.end());
        row.emplace_back(vehicle.marked);
        if (notes == Notes::With) {
            row.push_back(OrNull(vehicle.note1));
            row.push_back(OrNull(vehicle.note2));
        }
        writer.Add(std::move(row));
    }
    writer.Finish();
}

void WriteVisit(RowWriter& writer, const Visit& visit) {
    const Variant months = visit.months ? Variant(static_cast<std::int16_t>(*visit.months)) : Variant(Null{});
    writer.Add({visit.registration, visit.work, OrNull(visit.last), months});
}

void WriteVisits(const DatabasePtr& data, const Generator& generator, const GivenRows& given) {
    RowWriter writer(data, u"TVEH_DETAIL");
    for (const Visit& visit : given.visits) {
        WriteVisit(writer, visit);
    }
    for (int i = 0; i < generator.VehicleCount(); ++i) {
        for (const Visit& visit : generator.VisitsOf(i)) {
            WriteVisit(writer, visit);
        }
    }
    writer.Finish();
}

void WriteJobs(const DatabasePtr& data, const Generator& generator) {
    RowWriter writer(data, u"TAFF");
    for (int i = 0; i < generator.JobCount(); ++i) {
        const Job job = generator.JobAt(i);
        writer.Add({kFirstJob + i, OrNull(job.customer), OrNull(job.kind), job.label, OrNull(job.details),
                    OrNull(job.registration), OrNull(job.site), job.planned, OrNull(job.left)});
    }
    writer.Finish();
}

void WriteJobDetails(const DatabasePtr& data, const Generator& generator) {
    RowWriter writer(data, u"TAFF_DETAIL");
    for (int i = 0; i < generator.JobCount(); ++i) {
        const Job job = generator.JobAt(i);
        for (const Text& registration : job.vehicles) {
            writer.Add({basic::Empty{}, kFirstJob + i, registration, OrNull(job.left)});
        }
    }
    writer.Finish();
}

void MakeDataFile(const fs::path& file, const Scale& scale, const GivenRows& given, Notes notes) {
    const Generator generator(scale, given);
    const DatabasePtr data = MakeFile(file, DataTables(notes));
    WriteParameters(data);
    WriteCountries(data);
    WriteWorkTypes(data);
    WriteCustomers(data, generator);
    WriteVehicles(data, generator, notes);
    WriteVisits(data, generator, given);
    WriteJobs(data, generator);
    WriteJobDetails(data, generator);
}

}  // namespace

Scale ScaleFor(int vehicles, basic::Date today) {
    Scale scale;
    scale.vehicles = vehicles;
    scale.customers = (vehicles * 2 + 6) / 7;
    scale.visits = vehicles * 3;
    scale.jobs = vehicles * 8 / 3;
    scale.today = today;
    return scale;
}

void RequirePossible(const Scale& scale, const GivenRows& given) {
    (void)Generator(scale, given);
}

void MakeInstallation(const fs::path& folder, const Scale& scale, const GivenRows& given) {
    for (const char* name : {"DATA", "STOCK", "VEH"}) {
        MakeFolder(folder / name);
    }
    MakeDataFile(folder / "DATA" / "talmeon.mdb", scale, given, Notes::With);
    WritePaths(MakeFile(folder / "dbpath.mdb", PathTables()));
    WriteSites(MakeFile(folder / "STOCK" / "SERVANDA.MDB", StockTables()));
    WriteChanges(MakeFile(folder / "EvolutionV95.MDB", ChangeTables()));
    WriteTranslations(MakeFile(folder / "DATA" / "BDTRAD.MDB", TranslationTables()));
    MakeFile(folder / "SIGNETS.MDB", BookmarkTables());
    WriteLocalParameters(folder / "quardele.ini");
}

void MakeFormerDataFile(const fs::path& file, const Scale& scale) {
    MakeFolder(file.parent_path());
    MakeDataFile(file, scale, {}, Notes::Without);
}

}  // namespace quardele::workshop
