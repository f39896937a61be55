# Writes each block of C++ of a Markdown page into a file of its own in `folder`: "```cpp program" is
# a whole program, "```cpp body" the inside of a function that has a host and a player, plain "```cpp"
# declarations. A part knows the declarations before it. Line numbers are those of the page.

function start(line) {
    kind = line
    sub(/^```cpp */, "", kind)
    if (kind == "program") {
        file = folder "/program-" ++programs ".cpp"
        printf "" > file
    } else {
        file = folder "/part-" ++parts ".cpp"
        print "#include \"Application.h\"\n" declarations > file
        if (kind == "body")
            print "void body" parts "(zanto::EmbeddedHost& host, const std::shared_ptr<ZNTDisplayViewController>& player) {" > file
    }
    print "#line " NR + 1 " \"" FILENAME "\"" > file
}

function finish() {
    if (kind == "body")
        print "}" > file
    if (kind == "")
        declarations = declarations block
    close(file)
    file = ""
}

/^```cpp/ { block = ""; start($0); next }
/^```/ && file != "" { finish(); next }
file != "" { print > file; block = block $0 "\n" }
