#include "syshealth/inventory/labels.h"

namespace {

template <typename Table>
constexpr std::size_t kSize = std::tuple_size_v<Table>;

}  // namespace

static_assert(kSize<decltype(kProcessorLabels)> ==
              kSize<decltype(kProcessorProperties)>);
static_assert(kSize<decltype(kFanLabels)> == kSize<decltype(kFanProperties)>);
static_assert(kSize<decltype(kDimmLabels)> == kSize<decltype(kDimmProperties)>);
static_assert(kSize<decltype(kPowerLabels)> ==
              kSize<decltype(kPowerProperties)>);
static_assert(kSize<decltype(kPciAdapterLabels)> + 1 ==
              kSize<decltype(kPciAdapterProperties)>);

// clang-format off
const std::array<std::string, 4> kSystemBoardLabels = {
    "Machine Name",
    "Machine Type/Model",
    "Serial Number",
    "UUID",
};

const std::array<std::string, 5> kProcessorLabels = {
    "Name",
    "Family",
    "Current Frequency (MHz)",
    "Max Turbo Frequency (MHz)",
    "Health state",
};

const std::array<std::string, 5> kProcessorProperties = {
    "Name",
    "OtherFamilyDescription",
    "CurrentClockSpeed",
    "MaxClockSpeed",
    "HealthState",
};

const std::array<std::string, 3> kFanLabels = {
    "Name",
    "Desired Speed",
    "Health state",
};

const std::array<std::string, 3> kFanProperties = {
    "ElementName",
    "DesiredSpeed",
    "HealthState",
};

const std::array<std::string, 6> kDimmLabels = {
    "Description",
    "Part Number",
    "FRU Serial Number",
    "Manufacturer",
    "Type",
    "Max Memory Speed",
};

const std::array<std::string, 6> kDimmProperties = {
    "Description",
    "PartNumber",
    "SerialNumber",
    "Manufacturer",
    "Model",
    "MaxMemorySpeed",
};

const std::array<std::string, 3> kPowerLabels = {
    "Name",
    "Total Output Power",
    "Health state",
};

const std::array<std::string, 3> kPowerProperties = {
    "ElementName",
    "TotalOutputPower",
    "HealthState",
};

// Without blanks on purpose, unlike the other components' labels.
const std::array<std::string, 8> kPciAdapterLabels = {
    "Name",
    "Tag",
    "Manufacturer",
    "Model",
    "SerialNumber",
    "PartNumber",
    "FRU number",
    "OperationalStatus",
};

const std::array<std::string, 9> kPciAdapterProperties = {
    "Description",
    "Tag",
    "Manufacturer",
    "Model",
    "SerialNumber",
    "PartNumber",
    "SKU",
    "OperationalStatus",
    "StatusDescriptions",
};
// clang-format on
