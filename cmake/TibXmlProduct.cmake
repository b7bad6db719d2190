# The product: every folder's objects in one shared library, TibXml::TibXml, and its installation.
include(CMakePackageConfigHelpers)

# The directories whose headers a caller may include; all of them install into one.
set(TIBXML_PUBLIC_DIRECTORIES platform/common/include platform/${TIBXML_SYSTEM}/include
                              tibutils/include engine/api/include include)

# Headers among them that are offered to our own folders only: what they declare is not exported.
set(TIBXML_INTERNAL_HEADERS CLibrary.h ComObject.h StreamObject.h Utf.h WideNumber.h)
foreach(header IN LISTS TIBXML_INTERNAL_HEADERS)
  list(APPEND not_installed PATTERN ${header} EXCLUDE)
endforeach()

add_library(TibXml SHARED)
add_library(TibXml::TibXml ALIAS TibXml)
set_target_properties(
  TibXml
  PROPERTIES LINKER_LANGUAGE CXX
             VERSION ${PROJECT_VERSION}
             SOVERSION ${PROJECT_VERSION_MAJOR}
             LINK_DEPENDS ${PROJECT_SOURCE_DIR}/cmake/TibXml.map)
get_property(object_folders GLOBAL PROPERTY TIBXML_OBJECT_FOLDERS)
get_property(packages GLOBAL PROPERTY TIBXML_FOLDER_PACKAGES)
target_link_libraries(TibXml PRIVATE tibxml_build_options ${object_folders} ${packages}
                                     ${CMAKE_DL_LIBS})
target_compile_features(TibXml INTERFACE cxx_std_20)
target_link_options(TibXml PRIVATE LINKER:--version-script=${PROJECT_SOURCE_DIR}/cmake/TibXml.map
                    LINKER:--exclude-libs,ALL LINKER:--as-needed)
if(NOT TIBXML_SANITIZE)
  # The sanitizers' run-time functions are found in the program only.
  target_link_options(TibXml PRIVATE LINKER:--no-undefined)
endif()

foreach(directory IN LISTS TIBXML_PUBLIC_DIRECTORIES)
  target_include_directories(TibXml
                             INTERFACE $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/${directory}>)
  install(DIRECTORY ${directory}/TibXml DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
          FILES_MATCHING PATTERN "*.h" ${not_installed})
endforeach()
target_include_directories(TibXml INTERFACE $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)

install(TARGETS TibXml EXPORT TibXmlTargets LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})

# Callers by find_package(TibXml).
set(package_directory ${CMAKE_INSTALL_LIBDIR}/cmake/TibXml)
install(EXPORT TibXmlTargets NAMESPACE TibXml:: DESTINATION ${package_directory})
configure_package_config_file(
  cmake/TibXmlConfig.cmake.in ${PROJECT_BINARY_DIR}/TibXmlConfig.cmake
  INSTALL_DESTINATION ${package_directory} NO_SET_AND_CHECK_MACRO)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/TibXmlConfigVersion.cmake
                                 COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/TibXmlConfig.cmake
              ${PROJECT_BINARY_DIR}/TibXmlConfigVersion.cmake DESTINATION ${package_directory})

# Callers by pkg-config. The prefix is given relative to the file, so that the tree can be moved.
cmake_path(RELATIVE_PATH CMAKE_INSTALL_PREFIX
           BASE_DIRECTORY ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig OUTPUT_VARIABLE prefix_from_file)
configure_file(cmake/TibXml.pc.in ${PROJECT_BINARY_DIR}/TibXml.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/TibXml.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
