# Faster cold builds: unity builds everywhere, and three precompiled headers shared by every
# library and test target (one compile each instead of one per target).
#
# A target takes the precompiled header of its kind:
#   core     the headless libraries: Qt Core and the standard library
#   widgets  the Qt Widgets libraries: core, plus Qt Gui and Widgets
#   tests    the test executables: widgets, plus GoogleTest
# Each kind is compiled once, in a small host target, and reused (REUSE_FROM) by the others. The
# compile options of host and users must match: all targets get the same global flags, and the
# macros that differ (QT_*_LIB, VELMORAK_*) are not read by these headers. A mismatch shows up as
# an invalid-pch warning, which the warnings-as-errors build stops on.
#
# VELMORAK_UNITY=OFF and VELMORAK_PCH=OFF build file by file, e.g. to check that every file
# includes what it uses.

option(VELMORAK_UNITY "Unity build of the libraries and tests" ON)
option(VELMORAK_PCH "Shared precompiled headers for the libraries and tests" ON)

if(VELMORAK_UNITY)
    set(CMAKE_UNITY_BUILD ON)
    set(CMAKE_UNITY_BUILD_BATCH_SIZE 8)
endif()

# Files compiled alone in a unity build, because their file-local names meet another file's of
# the same target. Every register map (*Map.cpp) is one table under the same local names
# (kRows, kGrids, ...); the others share a local helper's name with a file beside them.
set(_velmorak_unity_alone
    src/laser/FrmLaserOmron.cpp         # kRows and kMap, as FrmLaser.cpp
    src/registers/FrmTransmitter.cpp    # kMap and kLayoutKey, as FrmAD9888.cpp
    tests/cardinfo/StatusFormTest.cpp   # open(), as MemCardTest.cpp
    tests/e2e/MonitorE2ETest.cpp        # bytesOf(), as AppStartUpTest.cpp
    tests/e2e/PresetLoadTest.cpp        # bytesOf(), as AppStartUpTest.cpp
    tests/e2e/LaserTest.cpp             # frames(), as SerialLinkTest.cpp
    tests/laser/FrmLaserOmronTest.cpp   # open(), as FrmLaserTest.cpp
    tests/registers/TransmitterMapTest.cpp # backs(), as RegisterMapTest.cpp
    tests/session/MemoryViewsTest.cpp   # viewOf(), as ViewTest.cpp
    tests/session/RLRegTest.cpp         # write(), as DatabaseFileTest.cpp
    tests/session/PollTest.cpp          # kProbe, as StartUpTest.cpp
    tests/session/TransmitterTest.cpp   # regWrite(), rowIn(), as Ad9888Test.cpp
    tests/sim/MonitorMemoryTest.cpp     # frame(), as VirtualCardTest.cpp
    tests/sim/PtyServerTest.cpp         # kParr, as SimTransportTest.cpp
)

set(_velmorak_pch_core
    <algorithm> <array> <cmath> <cstdint> <functional> <map> <memory> <optional> <stdexcept>
    <string> <utility> <vector>
    <QByteArray> <QCoreApplication> <QDir> <QElapsedTimer> <QFile> <QFileInfo> <QHash> <QList>
    <QObject> <QPointer> <QRegularExpression> <QString> <QStringList> <QTimer> <QVariant>)
set(_velmorak_pch_widgets ${_velmorak_pch_core}
    <QApplication> <QCheckBox> <QComboBox> <QDialog> <QGroupBox> <QHBoxLayout> <QKeyEvent>
    <QLabel> <QLineEdit> <QMainWindow> <QMenuBar> <QPainter> <QPushButton> <QTabWidget>
    <QTableWidget> <QVBoxLayout> <QWidget>)
set(_velmorak_pch_tests ${_velmorak_pch_widgets}
    <gtest/gtest.h> <QProcess> <QTemporaryDir>)

# velmorak_pch_host(kind libraries...): the target that compiles the header of that kind.
function(velmorak_pch_host kind)
    if(NOT VELMORAK_PCH)
        return()
    endif()
    set(host velmorak_pch_${kind})
    set(src ${CMAKE_BINARY_DIR}/${host}.cpp)
    file(CONFIGURE OUTPUT ${src} CONTENT "// Compiles the shared precompiled header.\n")
    add_library(${host} OBJECT ${src})
    set_target_properties(${host} PROPERTIES UNITY_BUILD OFF AUTOMOC OFF)
    target_link_libraries(${host} PRIVATE ${ARGN})
    target_precompile_headers(${host} PRIVATE ${_velmorak_pch_${kind}})
endfunction()

# velmorak_use_pch(kind targets...): those targets reuse the header of that kind.
function(velmorak_use_pch kind)
    if(NOT VELMORAK_PCH)
        return()
    endif()
    foreach(t ${ARGN})
        get_target_property(type ${t} TYPE)
        if(NOT type STREQUAL "INTERFACE_LIBRARY")
            target_precompile_headers(${t} REUSE_FROM velmorak_pch_${kind})
        endif()
    endforeach()
endfunction()

# The files of a target that a unity build compiles alone.
function(velmorak_unity_alone target)
    get_target_property(sources ${target} SOURCES)
    get_target_property(dir ${target} SOURCE_DIR)
    foreach(f ${sources})
        cmake_path(ABSOLUTE_PATH f BASE_DIRECTORY ${dir} OUTPUT_VARIABLE abs)
        cmake_path(RELATIVE_PATH abs BASE_DIRECTORY ${PROJECT_SOURCE_DIR} OUTPUT_VARIABLE rel)
        if(rel MATCHES "Map\\.cpp$" OR rel IN_LIST _velmorak_unity_alone)
            set_source_files_properties(${f} TARGET_DIRECTORY ${target}
                PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
        endif()
    endforeach()
endfunction()

# After all targets exist: the files a unity build compiles alone, and each library and test
# target given the header of its kind, by name (tests_* and the test support, *_ui for the
# Widgets libraries, the other velmorak_* libraries). The three programs are one file each and
# build without one.
function(velmorak_fast_build)
    foreach(dir ${ARGN})
        get_directory_property(targets DIRECTORY ${dir} BUILDSYSTEM_TARGETS)
        foreach(t ${targets})
            get_target_property(type ${t} TYPE)
            if(VELMORAK_UNITY AND type MATCHES "^(STATIC_LIBRARY|EXECUTABLE)$")
                velmorak_unity_alone(${t})
            endif()
            if(VELMORAK_UNITY AND t MATCHES "^tests_")
                # GCC takes each file a unit includes for a header, and so warns of a test
                # fixture in an anonymous namespace as of a header's type used in many files.
                # The file-by-file build still checks it.
                target_compile_options(${t} PRIVATE -Wno-subobject-linkage)
            endif()
        endforeach()
    endforeach()
    if(NOT VELMORAK_PCH)
        return()
    endif()
    velmorak_pch_host(core Qt6::Core)
    velmorak_pch_host(widgets Qt6::Widgets)
    if(VELMORAK_TESTS)
        velmorak_pch_host(tests Qt6::Widgets GTest::gtest)
    endif()
    foreach(dir ${ARGN})
        get_directory_property(targets DIRECTORY ${dir} BUILDSYSTEM_TARGETS)
        foreach(t ${targets})
            get_target_property(type ${t} TYPE)
            if(NOT type MATCHES "^(STATIC_LIBRARY|EXECUTABLE)$")
                continue()
            endif()
            if(t MATCHES "^tests_" OR t STREQUAL "velmorak_testsupport")
                velmorak_use_pch(tests ${t})
            elseif(t MATCHES "^velmorak_.*_ui$")
                velmorak_use_pch(widgets ${t})
            elseif(t MATCHES "^velmorak_" AND type STREQUAL "STATIC_LIBRARY")
                velmorak_use_pch(core ${t})
            endif()
        endforeach()
    endforeach()
endfunction()
