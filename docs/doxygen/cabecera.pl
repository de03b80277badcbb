# What Doxygen is given instead of a header, so that the headers can stay as people read them:
# - "/* ---- Title ----", with the paragraphs that hold for all functions below it, opens a group of members;
# - outside code the text of comments means itself: no command but those with @, no HTML, no emphasis;
# - a piece of code that ends with a backslash (`C:\dir\`) is closed by its backtick all the same;
# - the first paragraph is the brief description, whole: it may hold points that end no sentence;
# - a line that begins at the margin ends a list;
# - the words of linkage go;
# - "/** 8-bit flavour. */" stands for the arguments and the answer of the function above, its texts in the code page.
# A page in Markdown gets its table of contents, headings get anchors of their own, as GitHub names them, and links lead
# to what there is among the pages: those to files that are none become plain text.
# Lines keep their numbers but for one more after a list, so that warnings name the right ones.
use strict;
use warnings;
use Cwd;

my $raiz = getcwd();  # Doxygen gives whole paths

my ($en_grupo, $en_titulo, $en_comentario, $en_lista, $falta_breve) = (0, 0, 0, 0, 0);

sub literal {
    my ($texto) = @_;
    $texto =~ s/([\\%<>&#"])/\\$1/g;
    $texto =~ s/(?<=\s)\*(?=\s)/\\*/g;
    return $texto;
}

sub comentario {
    my ($linea) = @_;
    my $antes = '';
    if ($linea =~ m{^ \* (?:-|\d\.) }) {
        $en_lista = 1;
    } elsif ($linea !~ m{^ \*  }) {
        $antes = " *\n" if $en_lista && $linea =~ m{^ \* [^@]};
        $en_lista = 0;
    }
    my ($principio, $resto, $fin) = $linea =~ m{^(\s*(?:/\*\*<?|\*(?!/))?)(.*?)(\s*\*/)?$};
    if ($falta_breve && $resto =~ /\S/ && $resto !~ /\@file/) {
        $principio .= ' @brief';
        $falta_breve = 0;
    }
    my @trozos = split /(`[^`]*`)/, $resto;
    for my $trozo (@trozos) {
        if ($trozo =~ /^`(.*\\)`$/) {
            $trozo = "`` $1 ``";
        } elsif ($trozo =~ /^`(.*".*)`$/) {
            $trozo = '<tt>' . literal($1) . '</tt>';
            $trozo =~ s/\\\*/*/g;
        } elsif ($trozo !~ /^`/) {
            $trozo = literal($trozo);
        }
    }
    return $antes . $principio . join('', @trozos) . ($fin // '');
}

# Where a page in Markdown stands among those that are made, "" when it does not.
sub direccion {
    my ($fichero) = @_;
    return 'index.html' if $fichero eq 'docs/guide.md';
    return '' unless $fichero =~ m{^(?:(?:docs|packaging)/[a-z_A-Z]+|README|CHANGELOG|CONTRIBUTING)\.md$} && -e $fichero;
    (my $nombre = $fichero) =~ s/\.md$//;
    $nombre =~ s{/}{_}g;
    return "md_$nombre.html";
}

sub ancla {
    my ($titulo) = @_;
    $titulo = lc $titulo;
    $titulo =~ s/[^a-z0-9 _-]//g;
    $titulo =~ s/ /-/g;
    return $titulo;
}

sub enlace {
    my ($texto, $destino) = @_;
    return "[$texto]($destino)" if $destino =~ /^[a-z]+:/;
    my ($fichero, $parte) = split /#/, $destino, 2;
    (my $este = $ARGV) =~ s{^\Q$raiz\E/}{};
    (my $carpeta = $este) =~ s{[^/]*$}{};
    my $camino = $fichero eq '' ? $este : $carpeta . $fichero;
    1 while $camino =~ s{[^/]+/\.\./}{};
    my $pagina = direccion($camino);
    return $texto if $pagina eq '';
    my $prefijo = $camino =~ m{([^/]*)\.md$} ? $1 : '';
    return "[$texto]($pagina" . (defined $parte ? "#$prefijo-$parte" : '') . ')';
}

my $en_bloque = 0;
sub pagina {
    my ($linea) = @_;
    $en_bloque = !$en_bloque if $linea =~ /^```/;
    return $linea if $en_bloque || $linea =~ /^```/;
    my ($prefijo) = $ARGV =~ m{([^/]*)\.md$};
    if ($linea =~ /^(#{2,4}) (.*?)\s*$/) {
        return "$1 $2 {#$prefijo-" . ancla($2) . "}\n";
    }
    # In code a link is none, and a backslash at its end is one.
    my @trozos = split /(`[^`]*`)/, $linea;
    for my $trozo (@trozos) {
        if ($trozo =~ /^`(.*\\)`$/) {
            $trozo = "`` $1 ``";
        } elsif ($trozo =~ /^`(.*'.*)`$/) {
            $trozo = "``$1``";  # Doxygen takes `this' for a quotation
        } elsif ($trozo !~ /^`/) {
            $trozo =~ s/\[([^\]]*)\]\(([^)\s]+)\)/enlace($1, $2)/ge;
        }
    }
    $linea = join '', @trozos;
    # The text of a link may be code.
    $linea =~ s/\[(`[^`]*`)\]\(([^)\s]+)\)/enlace($1, $2)/ge;
    return $. == 1 ? "$linea\n[TOC]\n" : $linea;
}

# The last comment that stood before a function, a line each, and that function.
my (@ultimo, $ultima);

# A comment of one line, so that lines keep their numbers.
sub gemela {
    my ($resto) = @_;
    my $sin_respuesta = $resto =~ s/, without its answer//;
    my @detalles = map { s{^ \* ?}{}r } @ultimo;
    shift @detalles while @detalles && $detalles[0] !~ /^\@(?:param|return)/;
    my $texto = join ' ', @detalles;
    $texto =~ s/ *\@return.*//s if $sin_respuesta;
    $texto =~ s/\(UTF-16/(8-bit/g;
    $texto =~ s/widestr_nousar_destruye/lumostr_destruye/g;
    $texto =~ s/(arr_DestruyeCADENA)_u/$1/g;
    $texto =~ s/acadordeu_/acadorde_/g;
    $texto =~ s/_UNICODE\(\)/()/g;
    return "/** 8-bit flavour of $ultima()" . ($sin_respuesta ? ', without its answer.' : '.') . " $texto */";
}

my $en_ejemplo = 0;
while (my $linea = <>) {
    if ($ARGV =~ /\.md$/) {
        print pagina($linea);
        next;
    }
    $en_ejemplo = 1 if $linea =~ /\@code/;
    $en_ejemplo = 0 if $linea =~ /\@endcode/;
    if ($en_ejemplo) {
        print $linea;
        next;
    }
    chomp $linea;
    $linea =~ s/\r$//;
    if ($linea =~ m{^/\*\* 8-bit flavour(.*?)\. \*/$}) {
        $linea = gemela($1);
    } elsif ($linea =~ m{^/\*\*}) {
        @ultimo = ();
    } elsif ($linea =~ m{^ \*(?!/)}) {
        push @ultimo, $linea;
    } elsif ($linea =~ m{^(?:LUMODIR_API .*?)?(\w+)\(}) {
        $ultima = $1;
    }
    my $cierra = $en_grupo ? '/** @} */ ' : '';
    if ($linea =~ m{^/\* ---- (.*?) ----\s*(\*/)?$}) {
        $en_titulo = !defined $2;
        $en_grupo = 1;
        # Two comments on one line: @name takes the rest of its line.
        print "$cierra/** \@name $1", ($en_titulo ? '' : ' */ /** @{ */'), "\n";
        next;
    }
    if ($en_titulo) {
        if ($linea eq ' */') {
            $linea = ' * @{ */';
            $en_titulo = 0;
        } else {
            $linea = comentario($linea);
        }
        print "$linea\n";
        next;
    }
    if ($linea eq 'LUMODIR_EXTERN_C_FIN') {
        $linea = $cierra;
        $en_grupo = 0;
    } elsif ($linea =~ m{^\}  // namespace}) {
        $linea = $cierra . $linea;
        $en_grupo = 0;
    }
    $linea = '' if $linea =~ m{^#define LUMODIR_(?:API|EXTERN_C_)};
    $en_comentario = $falta_breve = 1 if $linea =~ m{^\s*/\*\*};
    if ($en_comentario) {
        $linea = comentario($linea);
    } elsif ($linea =~ m{^(.*?)(/\*\*<.*)$}) {
        $linea = $1 . comentario($2);
    }
    $en_comentario = 0 if $linea =~ m{\*/};
    print "$linea\n";
}
