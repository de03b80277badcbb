# What Doxygen is given instead of a header, so that the headers can stay as people read them:
# - "/* ---- Title ----", with the paragraphs that hold for all functions below it, opens a group of members;
# - outside code the text of comments means itself: no command but those with @, no HTML, no emphasis;
# - a piece of code that ends with a backslash (`C:\dir\`) is closed by its backtick all the same;
# - the first paragraph is the brief description, whole: it may hold points that end no sentence;
# - a line that begins at the margin ends a list;
# - the words of linkage go.
# Lines keep their numbers but for one more after a list, so that warnings name the right ones.
use strict;
use warnings;

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

my $en_ejemplo = 0;
while (my $linea = <>) {
    # A page gets its table of contents, which elsewhere would show as a word in brackets.
    if ($ARGV =~ /\.md$/) {
        print $linea, $. == 1 ? "\n[TOC]\n" : '';
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
