# As mingw.cmake, with the static Qt whose folder the environment names (windows/qt prints it). Its tools that
# run while building are this machine's.
include(${CMAKE_CURRENT_LIST_DIR}/mingw.cmake)
list(APPEND CMAKE_FIND_ROOT_PATH "$ENV{CORVEL_WINDOWS_QT}")
set(QT_HOST_PATH /usr)
