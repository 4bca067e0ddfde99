# Headers of the standard library, Qt and GoogleTest, compiled once for many files. With ccache, which cannot keep
# what was compiled with them, they are left out; so a file that forgets an #include is found there.
option(PIXOLUNE_PRECOMPILE "Compile common headers only once" ${PIXOLUNE_PRECOMPILE_DEFAULT})

set(PIXOLUNE_STANDARD_HEADERS
  <algorithm> <array> <cmath> <cstdint> <cstring> <filesystem> <functional> <map> <memory> <optional> <set> <span>
  <string> <string_view> <utility> <vector>)
set(PIXOLUNE_WIDGET_HEADERS
  <QApplication> <QButtonGroup> <QCheckBox> <QDialog> <QDialogButtonBox> <QFileDialog> <QFormLayout> <QGridLayout>
  <QGroupBox> <QHBoxLayout> <QImage> <QKeyEvent> <QLabel> <QLineEdit> <QLocale> <QMainWindow> <QPainter>
  <QPushButton> <QRadioButton> <QSettings> <QSpinBox> <QTimer> <QToolBar> <QToolButton> <QVBoxLayout>)
set(PIXOLUNE_TEST_HEADERS <gtest/gtest.h> <fstream> <random> <sstream>)

# Each kind is compiled by a target of its own, with no macro that not all of its users define.
function(pixolune_precompiled kind)
  cmake_parse_arguments(ARG "" "" "LINKS;HEADERS" ${ARGN})
  if(PIXOLUNE_PRECOMPILE)
    file(TOUCH ${CMAKE_BINARY_DIR}/precompiled_${kind}.cpp)
    add_library(precompiled_${kind} OBJECT ${CMAKE_BINARY_DIR}/precompiled_${kind}.cpp)
    target_link_libraries(precompiled_${kind} PRIVATE pixolune_options ${ARG_LINKS})
    target_precompile_headers(precompiled_${kind} PRIVATE ${ARG_HEADERS})
  endif()
endfunction()

function(pixolune_precompile target kind)
  if(PIXOLUNE_PRECOMPILE)
    target_precompile_headers(${target} REUSE_FROM precompiled_${kind})
    # The kinds are compiled as a library is; a program may be too.
    set_target_properties(${target} PROPERTIES POSITION_INDEPENDENT_CODE OFF)
    target_compile_options(${target} PRIVATE -fPIC)
  endif()
endfunction()
