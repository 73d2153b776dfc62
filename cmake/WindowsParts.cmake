# What of this project is built for Windows. All else is not, for the reasons that stand here and nowhere else.

# The rooms that know no machine, and the spreadsheet in memory, on which their tests run.
set(MIRELO_WINDOWS_ROOMS
  automation terminal forms host
  spreadsheet
  diagnostics core snapshot streaming worksheet charts dialog
  adapters/excel adapters/headless adapters/poll adapters/windows adapters/workbook
  automation_server com wire day person quotetracker windows)

# Tests of these. Those of the other rooms are tests of programs and of what is not built, and
#   scenarios            are days of programs and of saved workbooks
#   architecture         reads sources, which are the same
set(MIRELO_WINDOWS_TESTS
  support
  automation automation_server charts com core day diagnostics dialog excel forms headless http loop records snapshot spreadsheet
  streaming terminal wire person poll quotetracker registry settings windows workbook worksheet)

# Sources that are left out of what is built, as regular expressions of their paths.
set(MIRELO_WINDOWS_WITHOUT
  # Streams, signals and settings of a process of Linux. The desktop that nobody sits at is any machine's.
  "^src/terminal/(caught_stops|color|standard_streams|stop_signals|writing_signals)\\.cpp$"
  "^src/adapters/headless/(environment_format|linux_system|locale_format|system_clock)\\.cpp$"
  "^tests/headless/(environment_format|linux_system|locale_format|system_clock)_test\\.cpp$"
  "^tests/terminal/(color|standard_streams)_test\\.cpp$"
  # Debian has no libraries of Windows that read and write .xlsx; how files are held and replaced is Linux's.
  "^src/adapters/workbook/xlsx/"
  "^src/adapters/workbook/(atomic_file|companion_names|file_errors|file_hold|file_stamp|file_target|files|foreign_hold|leftovers|lock_file|process_copy|saved_spreadsheet|saving_copy|sent_error)\\.cpp$"
  "^tests/workbook/package_builder\\.cpp$"
  "^tests/worksheet/quote_table_widths_test\\.cpp$"
  # The registry's file is one of SQLite.
  "^tests/diagnostics/stored_position_test\\.cpp$"
  "^tests/registry/(sqlite_.*|tested_registries)\\.cpp$"
  # Windows' registry has no transactions.
  "^tests/registry/transaction_test\\.cpp$"
  # Processes are forked, and looked at in /proc.
  "^tests/support/(built_program|child_process|process_use|processes|refused_calls)\\.cpp$"
  # The program of the stand-in for QuoteTracker, which ends by signals: what it serves is served there, too. Pairs of sockets that keep
  # packets apart.
  "^tests/quotetracker/(outbox_test|program_test|started_program)\\.cpp$"
  # What a process of Linux allocates.
  "^tests/streaming/allocation_test\\.cpp$"
  # The C library that our table of letters is held against is Linux's.
  "^tests/automation/case_table_test\\.cpp$"
  # Signals, descriptors as Linux counts them, and waits of less than milliseconds.
  "^tests/poll/(descriptor|exact_timer|signal)_test\\.cpp$"
  # Loops of other toolkits; a session that the stand-in plays.
  "^tests/loop/(burst_test|main|office_waiting_test|qt_waiting_test)\\.cpp$"
  # What is libcurl's own: what it takes for a head, how it counts what comes and the time that passes, what it leaves with the
  # server, and where redirects end. tests/windows has limits and timeouts of WinINet's.
  "^tests/http/(hostile_heads|limits|long_transfer|multi|redirect_addresses|timeouts|unasked_requests|unread_bodies|whole_reply)_test\\.cpp$"
  # An alarm of the system's clock interrupts a walk that has no end.
  "^tests/streaming/endless_walk_test\\.cpp$")

# Takes what is not built for Windows out of a target's sources and of what it is linked of.
function(mirelo_leave_out_for_windows SOURCES LINK)
  set(sources ${${SOURCES}})
  set(kept "")
  foreach(source IN LISTS sources)
    get_filename_component(path ${source} ABSOLUTE)
    file(RELATIVE_PATH path ${CMAKE_SOURCE_DIR} ${path})
    set(is_kept TRUE)
    foreach(pattern IN LISTS MIRELO_WINDOWS_WITHOUT)
      if(path MATCHES "${pattern}")
        set(is_kept FALSE)
      endif()
    endforeach()
    if(is_kept)
      list(APPEND kept ${source})
    endif()
  endforeach()
  set(link ${${LINK}})
  list(FILTER link EXCLUDE REGEX "^(PkgConfig::|OpenSSL::|mirelo_(calc|curl|linux|qt|sqlite)$)")
  set(${SOURCES} ${kept} PARENT_SCOPE)
  set(${LINK} ${link} PARENT_SCOPE)
endfunction()
