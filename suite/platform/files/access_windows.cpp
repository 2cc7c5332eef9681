#include "suite/platform/files/access_windows.h"

#include <windows.h>
#include <aclapi.h>

#include <vector>

namespace platform {
namespace {

// Frees what the system allocated.
class LocalMemory {
 public:
  ~LocalMemory() { LocalFree(memory_); }
  LocalMemory() = default;
  LocalMemory(const LocalMemory&) = delete;
  LocalMemory& operator=(const LocalMemory&) = delete;

  void** address() { return &memory_; }

 private:
  void* memory_ = nullptr;
};

// The user as whom this process runs; its SID lies in the buffer.
PSID ownUser(std::vector<unsigned char>& buffer) {
  HANDLE token = nullptr;
  if (OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, &token) == 0) {
    return nullptr;
  }
  DWORD size = 0;
  GetTokenInformation(token, TokenUser, nullptr, 0, &size);
  buffer.resize(size);
  const BOOL told =
      GetTokenInformation(token, TokenUser, buffer.data(), size, &size);
  CloseHandle(token);
  return told == 0 ? nullptr
                   : reinterpret_cast<TOKEN_USER*>(buffer.data())->User.Sid;
}

bool mayRead(ACCESS_MASK rights) {
  return (rights & (FILE_READ_DATA | GENERIC_READ | GENERIC_ALL)) != 0;
}

bool isUserOrSystem(PSID who, PSID user) {
  return (user != nullptr && EqualSid(who, user) != 0) ||
         IsWellKnownSid(who, WinLocalSystemSid) != 0 ||
         IsWellKnownSid(who, WinBuiltinAdministratorsSid) != 0;
}

bool isTrusted(PSID who, PSID owner, PSID user) {
  return EqualSid(who, owner) != 0 || isUserOrSystem(who, user) ||
         IsWellKnownSid(who, WinCreatorOwnerRightsSid) != 0;
}

}  // namespace

bool othersCanRead(void* file) {
  PSID owner = nullptr;
  PACL list = nullptr;
  LocalMemory descriptor;
  if (GetSecurityInfo(file, SE_FILE_OBJECT,
                      OWNER_SECURITY_INFORMATION | DACL_SECURITY_INFORMATION,
                      &owner, nullptr, &list, nullptr,
                      descriptor.address()) != ERROR_SUCCESS ||
      list == nullptr) {
    return true;  // No list at all lets everyone in.
  }
  std::vector<unsigned char> buffer;
  const PSID user = ownUser(buffer);
  for (DWORD index = 0; index < list->AceCount; ++index) {
    void* entry = nullptr;
    if (GetAce(list, index, &entry) == 0) {
      return true;
    }
    const auto* const header = static_cast<ACE_HEADER*>(entry);
    if (header->AceType != ACCESS_ALLOWED_ACE_TYPE ||
        (header->AceFlags & INHERIT_ONLY_ACE) != 0) {
      continue;
    }
    auto* const allowed = static_cast<ACCESS_ALLOWED_ACE*>(entry);
    if (mayRead(allowed->Mask) && !isTrusted(&allowed->SidStart, owner, user)) {
      return true;
    }
  }
  return false;
}

bool belongsToOthers(void* file) {
  PSID owner = nullptr;
  LocalMemory descriptor;
  if (GetSecurityInfo(file, SE_FILE_OBJECT, OWNER_SECURITY_INFORMATION, &owner,
                      nullptr, nullptr, nullptr,
                      descriptor.address()) != ERROR_SUCCESS ||
      owner == nullptr) {
    return true;
  }
  std::vector<unsigned char> buffer;
  return !isUserOrSystem(owner, ownUser(buffer));
}

}  // namespace platform
