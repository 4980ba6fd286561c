# Makes FOLDER/gem.mdb from the template with gemdb, unless it is there: then it is the user's, and stays.
if(NOT EXISTS ${FOLDER}/gem.mdb)
    execute_process(COMMAND ${GEMDB} new ${FOLDER} ${OPTIONS} COMMAND_ERROR_IS_FATAL ANY OUTPUT_QUIET)
endif()
