' A host in a script that offers to delete from the record browser: an article goes, and the next one is picked.
Option Explicit

Class Celda
    Public Name
    Public Value
    Public Property Get Count
        Count = 1
    End Property
    Public Function Item(numero)
        Set Item = Me
    End Function
End Class

Class Articulos
    Public Codigos
    Public AbsolutePosition
    Public Property Get sClassName
        sClassName = "Articulos"
    End Property
    Public Property Get RecordCount
        RecordCount = UBound(Split(Codigos)) + 1
    End Property
    Public Property Get BOF
        BOF = AbsolutePosition < 1
    End Property
    Public Property Get EOF
        EOF = AbsolutePosition > RecordCount
    End Property
    Public Property Get Fields
        Dim uno, todos
        todos = Split(Codigos)
        Set uno = New Celda
        uno.Name = "Codigo"
        uno.Value = todos(AbsolutePosition - 1)
        Set Fields = uno
    End Property
    Public Sub MoveFirst
        AbsolutePosition = 1
    End Sub
    Public Sub MoveNext
        AbsolutePosition = AbsolutePosition + 1
    End Sub
    Public Sub Requery(consulta)
        WScript.Echo "Requery " & consulta
        AbsolutePosition = 1
    End Sub
    Public Sub FindRecord(texto, columna)
        WScript.Echo "FindRecord " & texto & " " & TypeName(columna) & " " & columna
        AbsolutePosition = 2
    End Sub
End Class

Class Pantalla
    Public Text
    Public Datos
    Public Sub AceptarEliminar(indice, ctl)
        WScript.Echo "AceptarEliminar " & indice & ", " & ctl.Text & ": " & Datos.Fields.Value
        Datos.Codigos = Replace(Datos.Codigos, Datos.Fields.Value & " ", "")
    End Sub
    Public Sub AceptarSeleccion(indice, ctl, valor)
        WScript.Echo "AceptarSeleccion " & indice & ", " & ctl.Text & ", " & valor
        ctl.Text = valor
    End Sub
End Class

Dim lista, campo
Set lista = New Articulos
lista.Codigos = "A-1 A-2 A-3"
lista.AbsolutePosition = 1
Set campo = New Pantalla
Set campo.Datos = lista
campo.Text = "A-2"
CreateObject("Tamvelo.ClsShowSerch").ShowRegistros campo, lista, campo, 1, 0, True
WScript.Echo "En el campo: " & campo.Text
