// The numbers of the catalogue.
#pragma once

#include <cstdint>

namespace quardele::jet::catalog_format {

/// Types of objects.
inline constexpr int kLocalTable = 1;
inline constexpr int kDocument = 2;
inline constexpr int kContainer = 3;
inline constexpr int kOdbcTable = 4;
inline constexpr int kLinkedTable = 6;

/// Identities that are the same in every file.
inline constexpr std::int32_t kRoot = 0x0F000000;
inline constexpr std::int32_t kTables = 0x0F000001;
inline constexpr std::int32_t kDatabases = 0x0F000002;
inline constexpr std::int32_t kRelationships = 0x0F000003;
inline constexpr std::int32_t kDatabaseDocument = 0x10000000;

/// Flags of objects.
inline constexpr std::uint32_t kSystemObject = 0x80000000;
inline constexpr std::uint32_t kSystemFlags = 0x80000002;
inline constexpr std::uint32_t kHiddenFlag = 0x00000008;
/// The page of a local table within its identity.
inline constexpr std::uint32_t kPageMask = 0x00FFFFFF;

/// Rights to a table: all of them.
inline constexpr std::int32_t kAllRights = 0x000FFFFF;

}  // namespace quardele::jet::catalog_format
