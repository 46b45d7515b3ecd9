# SPDX-License-Identifier: MIT
# An overlay port: vcpkg install stockbook --overlay-ports=packaging/vcpkg. It builds the tree that it lies in, as it stands.
get_filename_component(SOURCE_PATH "${CMAKE_CURRENT_LIST_DIR}/../.." ABSOLUTE)

vcpkg_check_features(OUT_FEATURE_OPTIONS feature_options
  FEATURES
    postgres STOCKBOOK_POSTGRES
    odbc STOCKBOOK_ODBC
  INVERTED_FEATURES
    qt STOCKBOOK_CORE_ONLY
)

# Libraries that are loaded by their first caller tell their name by objdump, so they have to be shared ones.
vcpkg_cmake_configure(
  SOURCE_PATH "${SOURCE_PATH}"
  OPTIONS
    ${feature_options}
    -DSTOCKBOOK_APP=OFF
    -DSTOCKBOOK_TESTS=OFF
    -DSTOCKBOOK_BENCH=OFF
    -DSTOCKBOOK_EXAMPLES=OFF
    -DSTOCKBOOK_WERROR=OFF
    -DSTOCKBOOK_DESKTOP_FILES=OFF
)
vcpkg_cmake_install()
vcpkg_cmake_config_fixup(PACKAGE_NAME Stockbook CONFIG_PATH lib/cmake/Stockbook)
vcpkg_fixup_pkgconfig()
file(REMOVE_RECURSE "${CURRENT_PACKAGES_DIR}/debug/include" "${CURRENT_PACKAGES_DIR}/debug/share")

file(INSTALL "${CMAKE_CURRENT_LIST_DIR}/usage" DESTINATION "${CURRENT_PACKAGES_DIR}/share/${PORT}")
vcpkg_install_copyright(FILE_LIST "${SOURCE_PATH}/LICENSE")
