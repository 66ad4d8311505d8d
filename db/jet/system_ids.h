// SPDX-License-Identifier: MIT
//
// Rows of the system tables: objects and who may use them.

#ifndef DB_JET_SYSTEM_IDS_H_
#define DB_JET_SYSTEM_IDS_H_

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "db/jet/bytes.h"
#include "db/jet/status.h"
#include "db/jet/store.h"

namespace jet {

inline constexpr std::int32_t kRootContainer = 0x0F000000;
inline constexpr std::int32_t kTablesContainer = 0x0F000001;
inline constexpr std::int32_t kDatabaseObject = 0x10000000;
inline constexpr const char* kDatabaseObjectName = "MSysDb";

// Security ids as a new file has them: masked with the key that goes with its header's date.
using SecurityId = std::array<std::uint8_t, 2>;
inline constexpr SecurityId kEngineId = {0xA7, 0x31};
inline constexpr SecurityId kAdminId = {0xA6, 0x33};
inline constexpr SecurityId kUsersId = {0xA7, 0x33};
inline constexpr SecurityId kCreatorId = {0xA7, 0x36};  // stands for whoever makes an object

inline constexpr std::uint32_t kCreatorMask = 0xF00FE;
inline constexpr std::uint32_t kAllOfATable = 0xFFEFF;

struct CatalogRow {
  std::int32_t id = 0;
  std::int32_t parent = 0;
  std::string name;
  std::int16_t type = 0;
  std::uint32_t flags = 0;
  Bytes owner;
  Bytes properties;  // none: null
};

// Both dates are the store's present time.
Status InsertCatalogRow(Store& store, const CatalogRow& row);
Status InsertPermission(Store& store, std::int32_t object, const Bytes& id, std::uint32_t mask,
                        bool inheritable);

// What a new table of an existing file gets: its owner and the ids that may use it, as the
// rows of the file have them.
Status FindOwner(Store& store, Bytes* owner);
Status FindTableUsers(Store& store, std::vector<Bytes>* users);

}  // namespace jet

#endif  // DB_JET_SYSTEM_IDS_H_
