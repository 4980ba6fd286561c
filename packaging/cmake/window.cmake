# The program, and a small companion that draws its window into a picture where there is no display.
add_executable(stelvan src/app/main.cpp)
target_link_libraries(stelvan PRIVATE stelvan_app)

add_executable(stelvan-picture src/app/picture.cpp)
target_link_libraries(stelvan-picture PRIVATE stelvan_app)
