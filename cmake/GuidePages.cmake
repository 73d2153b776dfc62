# The guide with all that its links lead to, as paths within this folder. Where it is installed or packed it lies as it does
# here, so that its links lead there, too.
set(MIRELO_GUIDE_PAGES
  docs/calc-history.png
  docs/calc-quotes.png
  docs/guide.md
  docs/quotetracker.md
  docs/screen-200x50.png
  docs/screen-80x24.png
  docs/settings.md
  docs/windows.md
  examples/README.md
  examples/calc/Quotes.bas
  examples/calc/functions.fods
  examples/calc/quotes.py
  examples/snapshot/CMakeLists.txt
  examples/snapshot/snapshot.cpp
  examples/stream/CMakeLists.txt
  examples/stream/stream.cpp
  examples/windows/day.vbs
  examples/windows/quotes.vbs
  examples/windows/stream.vbs
  examples/workbook/CMakeLists.txt
  examples/workbook/workbook.cpp)
